// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DesktopMessageStore.h"

#include "Platform/Linux/StoreFile.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr std::chrono::seconds kLongestSearch{2};

// Columns: text, date (seconds since 1970; the stored one counts nanoseconds since 2001), whether
// it is the person's own, sender, chat. Parameters: text, perhaps sender, limit.
constexpr auto kSelect = R"(    SELECT
        m.text,
        m.date / 1000000000 + 978307200 as msg_date,
        m.is_from_me,
        COALESCE(h.id, 'Unknown') as sender,
        c.chat_identifier
    FROM message m
    LEFT JOIN handle h ON m.handle_id = h.ROWID
    LEFT JOIN chat_message_join cmj ON cmj.message_id = m.ROWID
    LEFT JOIN chat c ON c.ROWID = cmj.chat_id
)";
constexpr auto kWhereText = "    WHERE m.text LIKE ?";
constexpr auto kAndSender = " AND h.id LIKE ?";
constexpr auto kNewestFirst = R"(
    ORDER BY m.date DESC
    LIMIT ?)";

// Chatty's store under the names of the statement (src/chatty-history.c of Chatty, version 4 of the
// store). `direction`: -1 out, 0 a note of the program, 1 in; `status` 1: a draft; `time`: seconds
// since 1970; `type` 0: a chat of two, named like the other party, who has no user's number in the
// messages that went out and takes the chat's, negative, here.
constexpr auto kChattyViews = R"(
    CREATE TEMP VIEW message AS
    SELECT id AS ROWID, body AS text, (time - 978307200) * 1000000000 AS date,
           direction = -1 AS is_from_me,
           CASE direction WHEN 1 THEN sender_id ELSE -thread_id END AS handle_id
      FROM messages
     WHERE time >= (SELECT earliest FROM span) AND direction <> 0 AND status IS NOT 1;
    CREATE TEMP VIEW handle AS
    SELECT id AS ROWID, username AS id FROM users
    UNION ALL SELECT -id, name FROM threads WHERE type = 0;
    CREATE TEMP VIEW chat_message_join AS
    SELECT id AS message_id, thread_id AS chat_id FROM messages;
    CREATE TEMP VIEW chat AS SELECT id AS ROWID, name AS chat_identifier FROM threads;)";
// It has no index of times. Enough hits since some time are the newest of all, and found in a third
// of the time, because those before need not be brought in order.
constexpr auto kChattyRecently = R"(
    CREATE TEMP VIEW span AS
    SELECT time AS earliest FROM messages ORDER BY id DESC LIMIT 1 OFFSET 9999)";
constexpr auto kChattyEver = R"(
    DROP VIEW temp.span;
    CREATE TEMP VIEW span AS SELECT -9223372036854775807 AS earliest)";

QList<StoredMessage> rows(SQLiteStatement statement)
{
    QList<StoredMessage> messages;
    while (statement.step()) {
        messages.append({
            .text = statement.text(0).value_or(QString()),
            .date = Instant::fromUnix(statement.real(1)),
            .isFromMe = statement.integer(2) == 1,
            .sender = statement.text(3),
            .chat = statement.text(4),
        });
    }
    return messages;
}

} // namespace

DesktopMessageStore::DesktopMessageStore(StandardFolders folders)
    : m_folders(std::move(folders))
{}

bool DesktopMessageStore::isReadable() const
{
    return storeFileState(source().path).exists;
}

QList<StoredMessage> DesktopMessageStore::matching(const QString &textPattern,
                                                   const std::optional<QString> &senderPattern,
                                                   int limit) const
{
    const QByteArray sql =
        QByteArray(kSelect) + kWhereText + (senderPattern ? kAndSender : "") + kNewestFirst;
    const Source store = source();
    QList<StoredMessage> messages;
    const QDeadlineTimer deadline(kLongestSearch);
    readDatabase(store.path, m_folders.cache, [&](SQLiteDatabase &database) {
        database.setDeadline(deadline);
        for (const QByteArray &views : store.views) {
            database.changeViews(views.constData());
            SQLiteStatement statement = database.prepare(sql.constData());
            int parameter = 0;
            statement.bind(++parameter, textPattern);
            if (senderPattern)
                statement.bind(++parameter, *senderPattern);
            statement.bind(++parameter, limit);
            messages = rows(std::move(statement));
            if (limit >= 0 && messages.size() == limit)
                break;
        }
    });
    return messages;
}

QString DesktopMessageStore::description() const
{
    const Source store = source();
    if (isReadable())
        return store.path;
    return QFileInfo::exists(store.path)
               ? store.path + u" may not be read"_s
               : u"no messages of Chatty, and no Library/Messages/chat.db in the home folder"_s;
}

DesktopMessageStore::Source DesktopMessageStore::source() const
{
    const QString chat = m_folders.home + "/Library/Messages/chat.db"_L1;
    if (QFileInfo::exists(chat))
        return {chat, {QByteArray()}};
    return {m_folders.home + "/.purple/chatty/db/chatty-history.db"_L1,
            {QByteArray(kChattyViews) + kChattyRecently, kChattyEver}};
}

} // namespace dugwise
