// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/DateRange.h"

#include <QCoroTask>
#include <QList>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace dugwise {

/// One stored mail.
struct MailSearchResult
{
    QUuid id;
    QString subject;
    QString sender;
    Instant date; ///< received
    QString snippet;
    QString path; ///< the stored message
    bool hasAttachments = false;
    QStringList attachmentNames;
};

/// Finds stored mail. As it stands here there is no mail to look in, and nothing is found.
class MailSearchService
{
public:
    MailSearchService() = default;
    Q_DISABLE_COPY_MOVE(MailSearchService)
    virtual ~MailSearchService() = default;

    /// Newest first.
    [[nodiscard]] virtual QCoro::Task<QList<MailSearchResult>>
    searchMail(QString query,
               std::optional<QString> senderEmail,
               std::optional<DateIntentParser::DateRange> dateRange);
};

} // namespace dugwise
