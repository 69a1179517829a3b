// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/DateRange.h"

#include <QCoroTask>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace dugwise {

/// Which stored messages are wanted; all conditions must hold, and an absent one always does.
struct MailPredicate
{
    /// Is somewhere in the text or in the subject, whatever the case, marks on letters, and the
    /// kind and length of white space. Every character stands for itself.
    std::optional<QString> textOrSubject;
    /// Is somewhere in an author's address, likewise.
    std::optional<QString> authorEmailAddress;
    std::optional<DateIntentParser::DateRange> contentCreationDate;

    bool operator==(const MailPredicate &) const = default;
};

/// What is known of one stored message.
struct MailItem
{
    std::optional<QString> subject;
    QStringList authors; ///< display names, or the address of whoever has none
    std::optional<Instant> contentCreationDate; ///< sent
    std::optional<QString> path;                ///< of the message's file, or of the folder's
    /// The beginning of its text, 300 characters at most.
    std::optional<QString> textContent;
};

/// Searches the messages that mail programs have stored on this machine.
class MetadataQuery
{
public:
    MetadataQuery() = default;
    Q_DISABLE_COPY_MOVE(MetadataQuery)
    virtual ~MetadataQuery() = default;

    /// Begins to look for new mail, so that a later search finds it at once.
    virtual void prepare() = 0;
    /// The newest that match, at most `most` of them, newest first, and those without a date last.
    /// Empty on any failure. May take as long as reading what is new.
    [[nodiscard]] virtual QCoro::Task<QList<MailItem>> gather(MailPredicate predicate,
                                                              int most) = 0;

    /// Whether there is any mail, or was.
    [[nodiscard]] virtual bool hasStores() const = 0;
    /// What is read, for people, or why nothing is. Reads files.
    [[nodiscard]] virtual QString description() const = 0;
};

} // namespace dugwise
