// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/MailSearchService.h"

#include "Models/Records/Hash.h"
#include "Platform/MetadataQuery.h"
#include "Utilities/Text.h"

#include <QCoreApplication>
#include <QCoroFuture>
#include <QPromise>
#include <QTimer>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr int kMostMails = 20;
constexpr std::size_t kMostSnippet = 250;      // characters
constexpr std::size_t kShortestWordSought = 3; // characters

bool hasWordToSeek(const QString &query)
{
    const QStringList pieces = query.split(u' ', Qt::SkipEmptyParts);
    return std::ranges::any_of(
        pieces, [](const QString &piece) { return characterCount(piece) >= kShortestWordSought; });
}

MailSearchResult record(const MailItem &item, Instant now)
{
    return {
        .id = QUuid::createUuid(),
        .subject = item.subject.value_or(u"No Subject"_s),
        .sender = item.authors.value(0, u"Unknown Sender"_s),
        .date = item.contentCreationDate.value_or(now),
        .snippet = firstCharacters(item.textContent.value_or(QString()), kMostSnippet),
        .path = item.path.value_or(QString()),
        .hasAttachments = false,
        .attachmentNames = {},
    };
}

/// The first answer counts.
using Answer = std::shared_ptr<QPromise<QList<MailItem>>>;

void settle(const Answer &answer, const QList<MailItem> &items)
{
    if (answer->future().isFinished())
        return;
    answer->addResult(items);
    answer->finish();
}

QCoro::Task<void> gather(MetadataQuery *query, MailPredicate predicate, Answer answer)
{
    auto gathering = query->gather(std::move(predicate), kMostMails);
    const QList<MailItem> items = co_await gathering;
    settle(answer, items);
}

} // namespace

size_t qHash(const MailSearchResult &result, size_t seed)
{
    return qHashMulti(seed,
                      result.id,
                      result.subject,
                      result.sender,
                      result.date,
                      result.snippet,
                      result.path,
                      result.hasAttachments,
                      result.attachmentNames);
}

MailSearchService::MailSearchService(MetadataQuery *query, Clock clock)
    : m_query(query)
    , m_clock(clock)
{}

QCoro::Task<QList<MailSearchResult>>
MailSearchService::searchMail(QString query,
                              std::optional<QString> senderEmail,
                              std::optional<DateIntentParser::DateRange> dateRange)
{
    QList<MailSearchResult> results;
    if (!m_query)
        co_return results;
    MailPredicate predicate;
    if (hasWordToSeek(query))
        predicate.textOrSubject = query;
    predicate.authorEmailAddress = std::move(senderEmail);
    predicate.contentCreationDate = dateRange;

    const auto answer = std::make_shared<QPromise<QList<MailItem>>>();
    answer->start();
    QTimer::singleShot(kLongestWait, qApp, [answer] { settle(answer, {}); });
    gather(m_query, std::move(predicate), answer);
    const QFuture<QList<MailItem>> answered = answer->future();
    const Instant now = m_clock.now();
    const QList<MailItem> items = co_await answered;
    for (const MailItem &item : items.first(std::min<qsizetype>(items.size(), kMostMails)))
        results.append(record(item, now));
    std::ranges::stable_sort(results, std::ranges::greater(), &MailSearchResult::date);
    co_return results;
}

} // namespace dugwise
