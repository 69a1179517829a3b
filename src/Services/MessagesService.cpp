// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/MessagesService.h"

#include "Models/Records/Hash.h"
#include "Platform/MessageStore.h"
#include "Utilities/Text.h"

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr std::size_t kMostText = 300; // characters

QString anywhere(const QString &text)
{
    return u'%' + text + u'%';
}

} // namespace

size_t qHash(const MessageSearchResult &result, size_t seed)
{
    return qHashMulti(seed,
                      result.id,
                      result.sender,
                      result.text,
                      result.date,
                      result.isFromMe,
                      hashOf(result.chatID));
}

MessagesService::MessagesService(const MessageStore *store)
    : m_store(store)
{}

bool MessagesService::isAccessible() const
{
    return m_store && m_store->isReadable();
}

QList<MessageSearchResult> MessagesService::searchMessages(const QString &query,
                                                           const std::optional<QString> &contactID,
                                                           int limit) const
{
    QList<MessageSearchResult> results;
    if (!isAccessible())
        return results;
    std::optional<QString> sender;
    if (contactID)
        sender = anywhere(*contactID);
    for (const StoredMessage &message : m_store->matching(anywhere(query), sender, limit)) {
        if (message.text.isEmpty())
            continue;
        results.append({
            .id = QUuid::createUuid(),
            .sender = message.sender.value_or(u"Unknown"_s),
            .text = firstCharacters(message.text, kMostText),
            .date = message.date,
            .isFromMe = message.isFromMe,
            .chatID = message.chat,
        });
    }
    return results;
}

} // namespace dugwise
