// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <sqlite3.h>

/// Stores of other programs, written as those write them.
namespace dugwise::test {

/// A database that is held as long as it lives.
class SampleDatabase
{
public:
    SampleDatabase(const QString &path, const QByteArray &schema)
    {
        QDir().mkpath(QFileInfo(path).path());
        if (sqlite3_open(QFile::encodeName(path).constData(), &m_database) != SQLITE_OK)
            qFatal("cannot make a database");
        run("PRAGMA synchronous = OFF;" + schema);
    }
    Q_DISABLE_COPY_MOVE(SampleDatabase)
    ~SampleDatabase() { sqlite3_close(m_database); }

    void run(const QByteArray &sql)
    {
        char *error = nullptr;
        if (sqlite3_exec(m_database, sql.constData(), nullptr, nullptr, &error) != SQLITE_OK)
            qFatal("%s: %s", sql.constData(), error);
    }

private:
    sqlite3 *m_database = nullptr;
};

inline QByteArray quoted(const QString &text)
{
    return '\'' + QString(text).replace(u'\'', QStringLiteral("''")).toUtf8() + '\'';
}

inline QByteArray number(double value)
{
    return QByteArray::number(value, 'f', 0);
}

/// One download of any browser; finished, unless said otherwise.
struct SampleDownload
{
    QString path;
    QString address{};
    Instant end{};
    qint64 size = 0;
    QString page{};
    int state = 1;
    bool deleted = false;
    QString firstAddress{}; ///< before a redirection
};

/// A profile of Firefox: exclusively locked, with a write-ahead log, as Firefox ESR 140 and later
/// hold it.
class SampleFirefox
{
public:
    explicit SampleFirefox(const QString &profile)
        : m_places(profile + QStringLiteral("/places.sqlite"), R"(
            PRAGMA locking_mode = EXCLUSIVE;
            PRAGMA journal_mode = WAL;
            PRAGMA wal_autocheckpoint = 0;
            CREATE TABLE moz_places (id INTEGER PRIMARY KEY, url LONGVARCHAR, title LONGVARCHAR,
                rev_host LONGVARCHAR, visit_count INTEGER DEFAULT 0, hidden INTEGER DEFAULT 0);
            CREATE TABLE moz_historyvisits (id INTEGER PRIMARY KEY, from_visit INTEGER,
                place_id INTEGER, visit_date INTEGER, visit_type INTEGER, session INTEGER);
            CREATE INDEX moz_historyvisits_placedateindex
                ON moz_historyvisits (place_id, visit_date);
            CREATE TABLE moz_anno_attributes (id INTEGER PRIMARY KEY,
                name VARCHAR(32) UNIQUE NOT NULL);
            CREATE TABLE moz_annos (id INTEGER PRIMARY KEY, place_id INTEGER NOT NULL,
                anno_attribute_id INTEGER, content LONGVARCHAR, flags INTEGER DEFAULT 0,
                expiration INTEGER DEFAULT 0, type INTEGER DEFAULT 0,
                dateAdded INTEGER DEFAULT 0, lastModified INTEGER DEFAULT 0);
            CREATE UNIQUE INDEX moz_annos_placeattributeindex
                ON moz_annos (place_id, anno_attribute_id);
            INSERT INTO moz_anno_attributes VALUES
                (1, 'other/name'), (2, 'downloads/destinationFileURI'), (3, 'downloads/metaData');
        )")
    {}

    void run(const QByteArray &sql) { m_places.run(sql); }
    /// An end of 0 is left out.
    void add(const SampleDownload &download, Instant added = {})
    {
        const QByteArray place = number(2 * ++m_count);
        const QByteArray page = number(2 * m_count + 1);
        const QByteArray date = number(added.unixSeconds() * 1e6);
        QJsonObject about{{QStringLiteral("state"), download.state},
                          {QStringLiteral("deleted"), download.deleted},
                          {QStringLiteral("fileSize"), download.size}};
        if (download.end != Instant{})
            about.insert(QStringLiteral("endTime"), download.end.unixSeconds() * 1000);
        const QString json = QString::fromUtf8(QJsonDocument(about).toJson(QJsonDocument::Compact));
        const QString uri =
            QString::fromUtf8("file://" + download.path.toUtf8().toPercentEncoding("/"));
        run("INSERT INTO moz_places (id, url) VALUES (" + place + ", " + quoted(download.address)
            + "), (" + page + ", " + quoted(download.page) + ");"
            + "INSERT INTO moz_historyvisits (id, from_visit, place_id, visit_date, visit_type) "
              "VALUES ("
            + page + ", 0, " + page + ", 1, 1), (" + place + ", " + page + ", " + place + ", 2, 7);"
            + "INSERT INTO moz_annos (place_id, anno_attribute_id, content, dateAdded, "
              "lastModified) "
              "VALUES ("
            + place + ", 2, " + quoted(uri) + ", " + date + ", " + date + "), (" + place + ", 3, "
            + quoted(json) + ", " + date + ", " + date + ")");
    }

private:
    SampleDatabase m_places;
    int m_count = 0;
};

/// A profile of Chromium: exclusively locked, with a rollback journal.
class SampleChromium
{
public:
    explicit SampleChromium(const QString &profile)
        : m_history(profile + QStringLiteral("/History"), R"(
            PRAGMA locking_mode = EXCLUSIVE;
            PRAGMA journal_mode = TRUNCATE;
            CREATE TABLE downloads (id INTEGER PRIMARY KEY, guid VARCHAR NOT NULL,
                current_path LONGVARCHAR NOT NULL, target_path LONGVARCHAR NOT NULL,
                start_time INTEGER NOT NULL, received_bytes INTEGER NOT NULL,
                total_bytes INTEGER NOT NULL, state INTEGER NOT NULL, end_time INTEGER NOT NULL,
                opened INTEGER NOT NULL, last_access_time INTEGER NOT NULL,
                referrer VARCHAR NOT NULL, site_url VARCHAR NOT NULL, tab_url VARCHAR NOT NULL,
                mime_type VARCHAR(255) NOT NULL);
            CREATE TABLE downloads_url_chains (id INTEGER NOT NULL, chain_index INTEGER NOT NULL,
                url LONGVARCHAR NOT NULL, PRIMARY KEY (id, chain_index));
        )")
    {}

    void run(const QByteArray &sql) { m_history.run(sql); }
    void add(const SampleDownload &download, const QString &tab = {})
    {
        constexpr double kTo1601 = 11'644'473'600;
        const QByteArray id = number(++m_count);
        const QByteArray end = number((download.end.unixSeconds() + kTo1601) * 1e6);
        const QByteArray size = number(static_cast<double>(download.size));
        run("INSERT INTO downloads VALUES (" + id + ", 'guid', " + quoted(download.path) + ", "
            + quoted(download.path) + ", 0, " + size + ", " + size + ", " + number(download.state)
            + ", " + end + ", 0, 0, " + quoted(download.page) + ", '', " + quoted(tab)
            + ", 'text/plain');");
        const QByteArray chain = "INSERT INTO downloads_url_chains VALUES (" + id;
        if (!download.firstAddress.isEmpty())
            run(chain + ", 0, " + quoted(download.firstAddress) + ")");
        run(chain + ", 1, " + quoted(download.address) + ")");
    }

private:
    SampleDatabase m_history;
    int m_count = 0;
};

/// The database of KDE's activity manager.
class SampleActivities
{
public:
    explicit SampleActivities(const QString &dataFolder)
        : m_resources(dataFolder + QStringLiteral("/kactivitymanagerd/resources/database"), R"(
            PRAGMA journal_mode = WAL;
            CREATE TABLE ResourceEvent (usedActivity TEXT, initiatingAgent TEXT,
                targettedResource TEXT, start INTEGER, end INTEGER);
            CREATE TABLE ResourceScoreCache (usedActivity TEXT, initiatingAgent TEXT,
                targettedResource TEXT, scoreType INTEGER, cachedScore FLOAT, firstUpdate INTEGER,
                lastUpdate INTEGER,
                PRIMARY KEY (usedActivity, initiatingAgent, targettedResource));
        )")
    {}

    void addScore(const QString &resource, Instant lastUpdate)
    {
        m_resources.run("INSERT INTO ResourceScoreCache VALUES ('a', 'org.kde.kate', "
                        + quoted(resource) + ", 0, 1.5, 1, " + number(lastUpdate.unixSeconds())
                        + ")");
    }
    /// `end` is SQL, such as "NULL" of an event that has not ended.
    void addEvent(const QString &resource, Instant start, const QByteArray &end)
    {
        m_resources.run("INSERT INTO ResourceEvent VALUES ('a', 'org.kde.kate', " + quoted(resource)
                        + ", " + number(start.unixSeconds()) + ", " + end + ")");
    }

private:
    SampleDatabase m_resources;
};

/// A message as any program keeps it; in one chat with the sender, unless said otherwise.
struct SampleMessage
{
    QString text;
    QByteArray date{};   ///< SQL, in the unit of the store
    int other = 1;       ///< number of the other party
    int direction = 1;   ///< -1 out, 1 in
    QList<int> chats{1}; ///< numbers
};

/// A database in the schema of iMessage, as far as it is used. Others and chats: 1 +15550101,
/// 2 sarah@example.org.
class SampleChatDatabase
{
public:
    /// `mode` is a PRAGMA or several.
    explicit SampleChatDatabase(const QString &home, const QByteArray &mode = {})
        : m_database(home + QStringLiteral("/Library/Messages/chat.db"), mode + R"(
            CREATE TABLE message (ROWID INTEGER PRIMARY KEY AUTOINCREMENT, guid TEXT UNIQUE,
                text TEXT, handle_id INTEGER DEFAULT 0, date INTEGER,
                is_from_me INTEGER DEFAULT 0);
            CREATE TABLE handle (ROWID INTEGER PRIMARY KEY AUTOINCREMENT UNIQUE, id TEXT NOT NULL,
                service TEXT, UNIQUE (id, service));
            CREATE TABLE chat (ROWID INTEGER PRIMARY KEY AUTOINCREMENT, guid TEXT UNIQUE,
                chat_identifier TEXT);
            CREATE TABLE chat_message_join (chat_id INTEGER REFERENCES chat (ROWID),
                message_id INTEGER REFERENCES message (ROWID), message_date INTEGER DEFAULT 0,
                PRIMARY KEY (chat_id, message_id));
            CREATE INDEX chat_message_join_idx_message_id_only ON chat_message_join (message_id);
            CREATE INDEX message_idx_date ON message (date);
            CREATE INDEX message_idx_handle ON message (handle_id, date);
            INSERT INTO handle (id, service) VALUES ('+15550101', 'SMS'),
                ('sarah@example.org', 'iMessage');
            INSERT INTO chat (guid, chat_identifier) VALUES ('a', '+15550101'),
                ('b', 'sarah@example.org');
        )")
    {}

    void run(const QByteArray &sql) { m_database.run(sql); }
    void add(const SampleMessage &message)
    {
        const QByteArray id = number(++m_count);
        run("INSERT INTO message (guid, text, handle_id, date, is_from_me) VALUES ('m" + id + "', "
            + quoted(message.text) + ", " + number(message.other) + ", " + message.date + ", "
            + (message.direction < 0 ? "1" : "0") + ")");
        for (const int chat : message.chats)
            run("INSERT INTO chat_message_join (chat_id, message_id) VALUES (" + number(chat) + ", "
                + id + ")");
    }

private:
    SampleDatabase m_database;
    int m_count = 0;
};

/// The store of Chatty, version 4, as far as it is used. Others: 1 +15550101, 2 sarah@example.org,
/// 3 Idris in a group; chats: those of the first two, and 3 the group.
class SampleChatty
{
public:
    explicit SampleChatty(const QString &home, const QByteArray &mode = {})
        : m_database(home + QStringLiteral("/.purple/chatty/db/chatty-history.db"), mode + R"(
            PRAGMA user_version = 4;
            CREATE TABLE users (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
                username TEXT NOT NULL, alias TEXT, type INTEGER NOT NULL,
                UNIQUE (username, type));
            CREATE TABLE accounts (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
                user_id INTEGER NOT NULL REFERENCES users(id), protocol INTEGER NOT NULL);
            CREATE TABLE threads (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
                name TEXT NOT NULL, alias TEXT,
                account_id INTEGER NOT NULL REFERENCES accounts(id) ON DELETE CASCADE,
                type INTEGER NOT NULL, UNIQUE (name, account_id, type));
            CREATE TABLE messages (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
                uid TEXT NOT NULL,
                thread_id INTEGER NOT NULL REFERENCES threads(id) ON DELETE CASCADE,
                sender_id INTEGER REFERENCES users(id), user_alias TEXT, body TEXT NOT NULL,
                body_type INTEGER NOT NULL, direction INTEGER NOT NULL, time INTEGER NOT NULL,
                status INTEGER, UNIQUE (uid, thread_id, body, time));
            INSERT INTO users (username, alias, type) VALUES ('+15550101', 'Maren', 1),
                ('sarah@example.org', NULL, 3), ('idris@example.org', NULL, 3),
                ('invalid-0000000000000000', NULL, 1);
            INSERT INTO accounts (user_id, protocol) VALUES (4, 1);
            INSERT INTO threads (name, account_id, type) VALUES ('+15550101', 1, 0),
                ('sarah@example.org', 1, 0), ('rowing@example.org', 1, 1);
        )")
    {}

    void run(const QByteArray &sql) { m_database.run(sql); }
    /// `status` is SQL.
    void add(const SampleMessage &message, const QByteArray &status = "NULL")
    {
        run("INSERT INTO messages (uid, thread_id, sender_id, body, body_type, direction, time, "
            "status) VALUES ('m"
            + number(++m_count) + "', " + number(message.chats.first()) + ", "
            + (message.direction > 0 ? number(message.other) : QByteArray("NULL")) + ", "
            + quoted(message.text) + ", 1, " + number(message.direction) + ", " + message.date
            + ", " + status + ")");
    }

private:
    SampleDatabase m_database;
    int m_count = 0;
};

/// A recently-used.xbel of these bookmarks.
inline QByteArray xbel(const QByteArray &bookmarks)
{
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<xbel version="1.0"
      xmlns:bookmark="http://www.freedesktop.org/standards/desktop-bookmarks"
      xmlns:mime="http://www.freedesktop.org/standards/shared-mime-info">
)" + bookmarks
           + "</xbel>\n";
}

/// A bookmark with these attributes, such as "visited=…", and one application.
inline QByteArray
bookmark(const QString &path, const QByteArray &attributes, const QByteArray &application = {})
{
    return "<bookmark href=\"file://" + path.toUtf8().toPercentEncoding("/") + "\" " + attributes
           + R"(><info><metadata owner="http://freedesktop.org"><mime:mime-type type="text/plain"/>
<bookmark:applications><bookmark:application name="Editor" exec="&apos;editor %u&apos;" count="2" )"
           + application + "/></bookmark:applications></metadata></info></bookmark>\n";
}

} // namespace dugwise::test
