// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace dugwise {

/// One text message.
struct MessageSearchResult
{
    QUuid id;
    QString sender; ///< the other party
    QString text;
    Instant date; ///< sent or received
    bool isFromMe = false;
    std::optional<QString> chatID;
};

/// Finds text messages. As it stands here there is no message store, and nothing is found.
class MessagesService
{
public:
    MessagesService() = default;
    Q_DISABLE_COPY_MOVE(MessagesService)
    virtual ~MessagesService() = default;

    [[nodiscard]] virtual bool isAccessible() const;
    /// Newest first; `contactID` is an address, a number or a name.
    [[nodiscard]] virtual QList<MessageSearchResult>
    searchMessages(const QString &query, const std::optional<QString> &contactID, int limit) const;
};

} // namespace dugwise
