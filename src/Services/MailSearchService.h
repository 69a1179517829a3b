// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/DateRange.h"
#include "Utilities/Clock.h"

#include <QCoroTask>
#include <QList>
#include <QStringList>
#include <QUuid>

#include <chrono>
#include <optional>

namespace dugwise {

class MetadataQuery;

/// One stored mail.
struct MailSearchResult
{
    QUuid id;        ///< random, given when the record is made
    QString subject; ///< or "No Subject"
    QString sender;  ///< the first author, or "Unknown Sender"
    Instant date;    ///< sent; the moment the record was made, where the mail does not say
    QString snippet; ///< the first 250 characters of the text
    QString path;    ///< of the stored message, or of the file that holds it; may be empty
    bool hasAttachments = false; ///< attachments are not looked at
    QStringList attachmentNames;

    bool operator==(const MailSearchResult &) const = default;
};

[[nodiscard]] size_t qHash(const MailSearchResult &result, size_t seed = 0);

/// Finds stored mail. Holds nothing of its own; for the UI thread.
class MailSearchService
{
public:
    /// `query` is null where there is none, and outlives the service.
    explicit MailSearchService(MetadataQuery *query = nullptr, Clock clock = {});
    Q_DISABLE_COPY_MOVE(MailSearchService)
    virtual ~MailSearchService() = default;

    /// The mails whose text or subject has `query` in it as it stands, whatever its case and the
    /// marks on its letters, unless all of its words have less than three characters; sent by the
    /// address, or one that has it in it, and within the range, ends included. At most 20, newest
    /// first. Empty on any failure, and when nothing is known within kLongestWait.
    [[nodiscard]] virtual QCoro::Task<QList<MailSearchResult>>
    searchMail(QString query,
               std::optional<QString> senderEmail,
               std::optional<DateIntentParser::DateRange> dateRange);

    static constexpr std::chrono::seconds kLongestWait{2};

private:
    MetadataQuery *m_query;
    Clock m_clock;
};

} // namespace dugwise
