// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/SampleStores.h"

namespace dugwise::test {

/// A calendar's database in a profile of Thunderbird, schema 23, as far as it is used; in use, with
/// a write-ahead log.
class SampleThunderbirdCalendar
{
public:
    /// `name`: "local" or "cache".
    explicit SampleThunderbirdCalendar(const QString &profile,
                                       const QString &name = QStringLiteral("local"))
        : m_database(profile + QStringLiteral("/calendar-data/%1.sqlite").arg(name), R"(
            PRAGMA journal_mode = WAL;
            PRAGMA wal_autocheckpoint = 0;
            CREATE TABLE cal_calendar_schema_version (version INTEGER);
            INSERT INTO cal_calendar_schema_version VALUES (23);
            CREATE TABLE cal_events (cal_id TEXT, id TEXT, time_created INTEGER,
                last_modified INTEGER, title TEXT, priority INTEGER, privacy TEXT,
                ical_status TEXT, flags INTEGER, event_start INTEGER, event_end INTEGER,
                event_stamp INTEGER, event_start_tz TEXT, event_end_tz TEXT,
                recurrence_id INTEGER, recurrence_id_tz TEXT, alarm_last_ack INTEGER,
                offline_journal INTEGER);
            CREATE TABLE cal_properties (item_id TEXT, key TEXT, value BLOB,
                recurrence_id INTEGER, recurrence_id_tz TEXT, cal_id TEXT);
            CREATE TABLE cal_recurrence (item_id TEXT, cal_id TEXT, icalString TEXT);
        )")
    {}

    struct Event
    {
        QString id;
        QString title;
        Instant start; ///< of floating ones as if it were UTC
        Instant end;
        QString zone = QStringLiteral("UTC");
        QByteArray recurrenceId = "NULL"; ///< SQL
        QString recurrenceZone{};         ///< its own where it has none
        int flags = 0;
        QString status{};
        QByteArray journal = "NULL"; ///< SQL
    };
    void add(const Event &event)
    {
        const QByteArray zone = quoted(event.zone);
        run("INSERT INTO cal_events VALUES ('cal', " + quoted(event.id) + ", 0, 0, "
            + quoted(event.title) + ", 0, 'PUBLIC', " + quoted(event.status) + ", "
            + number(event.flags) + ", " + time(event.start) + ", " + time(event.end) + ", 0, "
            + zone + ", " + zone + ", " + event.recurrenceId + ", "
            + (event.recurrenceZone.isEmpty() ? zone : quoted(event.recurrenceZone)) + ", NULL, "
            + event.journal + ")");
    }
    void addProperty(const QString &id,
                     const QString &key,
                     const QString &value,
                     const QByteArray &recurrenceId = "NULL")
    {
        run("INSERT INTO cal_properties VALUES (" + quoted(id) + ", " + quoted(key) + ", CAST("
            + quoted(value) + " AS BLOB), " + recurrenceId + ", 'UTC', 'cal')");
    }
    void addRecurrence(const QString &id, const QString &line)
    {
        run("INSERT INTO cal_recurrence VALUES (" + quoted(id) + ", 'cal', "
            + quoted(line + QStringLiteral("\r\n")) + ")");
    }
    void run(const QByteArray &sql) { m_database.run(sql); }

    /// As the database has it.
    [[nodiscard]] static QByteArray time(Instant instant)
    {
        return number(instant.unixSeconds() * 1e6);
    }

private:
    SampleDatabase m_database;
};

/// An address book in a profile of Thunderbird, in use, with a write-ahead log.
class SampleThunderbirdBook
{
public:
    /// `name`: "abook", "abook-1", "history".
    SampleThunderbirdBook(const QString &profile, const QString &name)
        : m_database(profile + QStringLiteral("/%1.sqlite").arg(name), R"(
            PRAGMA journal_mode = WAL;
            PRAGMA wal_autocheckpoint = 0;
            CREATE TABLE properties (card TEXT, name TEXT, value TEXT);
            CREATE TABLE lists (uid TEXT PRIMARY KEY, name TEXT, nickName TEXT, description TEXT);
            CREATE TABLE list_cards (list TEXT, card TEXT, PRIMARY KEY (list, card));
            CREATE INDEX properties_card ON properties (card);
        )")
    {}

    void add(const QString &card, const QList<std::pair<QString, QString>> &properties)
    {
        for (const auto &[name, value] : properties)
            run("INSERT INTO properties VALUES (" + quoted(card) + ", " + quoted(name) + ", "
                + quoted(value) + ")");
    }
    void run(const QByteArray &sql) { m_database.run(sql); }

private:
    SampleDatabase m_database;
};

} // namespace dugwise::test
