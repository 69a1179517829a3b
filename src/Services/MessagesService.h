// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace dugwise {

class MessageStore;

/// One text message.
struct MessageSearchResult
{
    QUuid id;       ///< random, given when the record is made
    QString sender; ///< the other party's number or address, or "Unknown"
    QString text;   ///< the first 300 characters
    Instant date;   ///< sent or received
    bool isFromMe = false;
    std::optional<QString> chatID; ///< the conversation's identifier

    bool operator==(const MessageSearchResult &) const = default;
};

[[nodiscard]] size_t qHash(const MessageSearchResult &result, size_t seed = 0);

/// Finds text messages. Holds nothing of its own; callable from any thread.
class MessagesService
{
public:
    /// `store` is null where there is none, and outlives the service.
    explicit MessagesService(const MessageStore *store = nullptr);
    Q_DISABLE_COPY_MOVE(MessagesService)
    virtual ~MessagesService() = default;

    /// Whether there are messages that may be read; looks anew at each call.
    [[nodiscard]] virtual bool isAccessible() const;
    /// The messages whose text has `query` in it, ASCII letters without regard to case, the newest
    /// first; with `contactID` only those whose other party's number or address has that in it. "%"
    /// stands for any text in both and "_" for any character. At most `limit` are looked at, and
    /// those without text left out; a message of several chats comes once for each. Empty on any
    /// failure. Reads files: for workers.
    [[nodiscard]] virtual QList<MessageSearchResult>
    searchMessages(const QString &query, const std::optional<QString> &contactID, int limit) const;

private:
    const MessageStore *m_store;
};

} // namespace dugwise
