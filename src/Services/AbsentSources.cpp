// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/CalendarService.h"
#include "Services/ContactsService.h"
#include "Services/MailSearchService.h"

// What each source answers where it has nothing to read from.

namespace dugwise {

QCoro::Task<QList<MailSearchResult>>
MailSearchService::searchMail(QString /*query*/,
                              std::optional<QString> /*senderEmail*/,
                              std::optional<DateIntentParser::DateRange> /*dateRange*/)
{
    co_return QList<MailSearchResult>();
}

QCoro::Task<void> CalendarService::requestAccess()
{
    co_return;
}

bool CalendarService::hasAccess() const
{
    return false;
}

QList<CalendarSearchResult> CalendarService::searchEvents(
    const QString & /*query*/,
    const std::optional<DateIntentParser::DateRange> & /*dateRange*/) const
{
    return {};
}

std::optional<DateIntentParser::DateRange>
CalendarService::findDateAnchor(const QString & /*text*/) const
{
    return std::nullopt;
}

QCoro::Task<void> ContactsService::requestAccess()
{
    co_return;
}

bool ContactsService::hasAccess() const
{
    return false;
}

QList<ResolvedContact> ContactsService::findContacts(const QString & /*name*/) const
{
    return {};
}

} // namespace dugwise
