// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/CrossAppResults.h"

#include "Utilities/Formatters.h"

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr qsizetype kMostMails = 5;
constexpr qsizetype kMostMessages = 5;
constexpr qsizetype kMostEvents = 3;

} // namespace

QList<CrossAppResult> crossAppResults(const QList<MailSearchResult> &mails)
{
    QList<CrossAppResult> results;
    for (const MailSearchResult &mail : mails.first(std::min(mails.size(), kMostMails))) {
        results.append({
            .id = QUuid::createUuid(),
            .source = CrossAppSource::email,
            .title = mail.subject,
            .subtitle = mail.sender,
            .snippet = mail.snippet,
            .date = mail.date,
            .relevanceScore = 1,
            .actionPath = mail.path,
        });
    }
    return results;
}

QList<CrossAppResult> crossAppResults(const QList<MessageSearchResult> &messages, Instant now)
{
    QList<CrossAppResult> results;
    for (const MessageSearchResult &message :
         messages.first(std::min(messages.size(), kMostMessages))) {
        results.append({
            .id = QUuid::createUuid(),
            .source = CrossAppSource::message,
            .title = (message.isFromMe ? u"To: "_s : u"From: "_s) + message.sender,
            .subtitle = relativeTime(message.date, now, UnitStyle::abbreviated),
            .snippet = message.text,
            .date = message.date,
            .relevanceScore = 1,
            .actionPath = std::nullopt,
        });
    }
    return results;
}

QList<CrossAppResult> crossAppResults(const QList<CalendarSearchResult> &events)
{
    QList<CrossAppResult> results;
    for (const CalendarSearchResult &event : events.first(std::min(events.size(), kMostEvents))) {
        results.append({
            .id = QUuid::createUuid(),
            .source = CrossAppSource::calendar,
            .title = event.eventTitle,
            .subtitle = event.location.value_or(QString()),
            .snippet = event.notes.value_or(QString()),
            .date = event.eventDate,
            .relevanceScore = event.relevanceScore,
            .actionPath = std::nullopt,
        });
    }
    return results;
}

} // namespace dugwise
