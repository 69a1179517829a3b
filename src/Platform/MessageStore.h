// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

#include <QList>
#include <QString>

#include <optional>

namespace dugwise {

/// One message of one chat, as another program keeps it.
struct StoredMessage
{
    QString text;
    Instant date; ///< sent or received, in whole seconds
    bool isFromMe = false;
    std::optional<QString> sender; ///< the other party's number or address
    std::optional<QString> chat;   ///< the identifier of the conversation
};

/// The message history that another program keeps for the person. Callable from any thread.
class MessageStore
{
public:
    MessageStore() = default;
    Q_DISABLE_COPY_MOVE(MessageStore)
    virtual ~MessageStore() = default;

    /// Whether there is a history that may be read; looks anew at each call.
    [[nodiscard]] virtual bool isReadable() const = 0;
    /// The messages that match patterns of SQL's LIKE, the newest first; a message of several chats
    /// comes once for each. `limit` is the most rows that are read. Empty on any failure. Reads
    /// files: for workers.
    [[nodiscard]] virtual QList<StoredMessage> matching(const QString &textPattern,
                                                        const std::optional<QString> &senderPattern,
                                                        int limit) const = 0;
    /// What is read, for people, or why nothing is.
    [[nodiscard]] virtual QString description() const = 0;
};

} // namespace dugwise
