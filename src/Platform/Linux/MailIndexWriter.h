// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/MailStores.h"
#include "Platform/Linux/SQLiteDatabase.h"
#include "Platform/MailParser.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include <optional>
#include <stop_token>
#include <variant>

namespace dugwise {

/// Writes the index that MailIndex reads, one folder of messages at a time. Only one process may
/// have one at a time, for which its user holds a lock. Whatever fails is told by hasFailed(), and
/// what is done after that does nothing. What has not been committed is undone with it.
class MailIndexWriter
{
public:
    /// By what an item is known in its folder: the part of a file's name that stays (Maildir), or
    /// the message's key (mbox).
    using Key = std::variant<QByteArray, qint64>;

    struct Folder
    {
        qint64 id = 0;
        /// How the folder was when all of it had been read; empty when that is not known.
        QByteArray state;
        qint64 size = -1;   ///< of an mbox as far as it was read; negative for never
        qint64 tail = 0;    ///< offset of its last message
        qint64 tailKey = 0; ///< that one's key
    };
    struct NewMessage
    {
        qint64 folder;
        Key key;
        QByteArray name; ///< of its file below the folder; empty for those in an mbox
        /// Absent for one that cannot be read, which is not tried again.
        std::optional<ParsedMail> mail;
    };

    /// Opens the index in `folder`, made anew when it is of another version or damaged. A stop is a
    /// failure, whatever is under way.
    explicit MailIndexWriter(const QString &folder, std::stop_token stop = {});

    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }
    /// Whether it failed because the index is damaged.
    [[nodiscard]] bool isDamaged() const { return m_isDamaged; }
    /// Has the next one begin with an empty index.
    void markDamaged() const;

    /// What is known, by the folders' paths.
    [[nodiscard]] QHash<QString, Folder> folders();
    /// The folder's record, made where there is none.
    [[nodiscard]] Folder folder(const QString &path);
    [[nodiscard]] QSet<qint64> keys(qint64 folder);
    /// Those of a folder of either kind.
    [[nodiscard]] QList<Key> allKeys(qint64 folder);
    /// The names of files by their keys; empty for those that could not be read.
    [[nodiscard]] QHash<QByteArray, QByteArray> names(qint64 folder);

    void begin();
    void commit();

    void add(QList<NewMessage> messages);
    /// Many are committed some thousands at a time; until the folder is saved again it then counts
    /// as one that has not been read.
    void remove(qint64 folder, const Key &key);
    void rename(qint64 folder, const Key &key, const QByteArray &name);
    void save(const Folder &folder);
    /// One that has no items any more.
    void removeFolder(qint64 folder);
    /// Bytes that have been read of those that are new; none of either when all have been.
    void setProgress(qint64 done, qint64 total);

private:
    void insert(qint64 id, const NewMessage &message);
    [[nodiscard]] qint64 messageOf(qint64 folder, const Key &key);
    [[nodiscard]] bool mustBeMade();
    void make();
    void check(bool isDone);

    QString m_folder;
    QString m_path;
    std::stop_token m_stop;
    SQLiteDatabase m_database;
    qint64 m_removed = 0;
    bool m_hasFailed = false;
    bool m_isDamaged = false;
    // Of m_database, and gone before it.
    SQLiteStatement m_insertMessage, m_insertWords, m_insertItem, m_lastNumber;
    SQLiteStatement m_findItem, m_deleteItem, m_deleteMessage, m_deleteWords, m_rename;
};

} // namespace dugwise
