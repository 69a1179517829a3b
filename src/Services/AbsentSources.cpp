// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/MailSearchService.h"

// What a source answers where it has nothing to read from.

namespace dugwise {

QCoro::Task<QList<MailSearchResult>>
MailSearchService::searchMail(QString /*query*/,
                              std::optional<QString> /*senderEmail*/,
                              std::optional<DateIntentParser::DateRange> /*dateRange*/)
{
    co_return QList<MailSearchResult>();
}

} // namespace dugwise
