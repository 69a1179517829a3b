// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/ThunderbirdStores.h"

#include "Platform/Linux/BrowserProfiles.h"
#include "Platform/Linux/StoreFile.h"

#include <QDateTime>
#include <QDir>
#include <QRegularExpression>
#include <QSet>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr qsizetype kLargestDocument = qsizetype{64} * 1024 * 1024;

// Schema 23 (calendar/providers/storage of Thunderbird). Times are microseconds since 1970, of
// floating ones as if they were UTC. Flag 8: whole days. Offline journal 4: deleted here, and there
// the next time.
constexpr auto kEvents = R"(
    SELECT cal_id || char(10) || id, title, flags & 8, event_start, event_start_tz, event_end,
           event_end_tz, recurrence_id, recurrence_id_tz, ical_status, id
      FROM cal_events
     WHERE event_start IS NOT NULL AND offline_journal IS NOT 4)";
constexpr int kReplaced = 7; // its column recurrence_id
constexpr auto kProperties = R"(
    SELECT cal_id || char(10) || item_id, recurrence_id, key, value
      FROM cal_properties
     WHERE key IN ('DESCRIPTION', 'LOCATION'))";
constexpr auto kRecurrences = R"(
    SELECT cal_id || char(10) || item_id, icalString FROM cal_recurrence)";

// Of an address book (mailnews/addrbook/modules/SQLiteDirectory.sys.mjs of Thunderbird).
constexpr auto kCardProperties = "SELECT card, name, value FROM properties ORDER BY rowid";

/// A text as a value of iCalendar or vCard.
QByteArray escaped(const QString &text)
{
    QByteArray value;
    for (const char byte : text.toUtf8()) {
        if (byte == '\n')
            value += "\\n";
        else if (byte == '\\' || byte == ';' || byte == ',')
            value.append('\\').append(byte);
        else if (byte != '\r')
            value += byte;
    }
    return value;
}

QByteArray line(const QByteArray &name, const QString &text)
{
    return text.isEmpty() ? QByteArray() : name + ':' + escaped(text) + '\n';
}

/// Writes the events of a database down as a calendar.
class CalendarText
{
public:
    explicit CalendarText(const SQLiteDatabase &database)
    {
        readProperties(database);
        SQLiteStatement events = database.prepare(kEvents);
        while (events.step() && m_text.size() < kLargestDocument)
            addEvent(events);
    }
    [[nodiscard]] QByteArray text() const { return m_text; }

private:
    void readProperties(const SQLiteDatabase &database)
    {
        SQLiteStatement properties = database.prepare(kProperties);
        while (properties.step()) {
            const QString event = eventKey(properties.text(0), properties.integer(1));
            const QByteArray name = properties.text(2).value_or(QString()).toUtf8();
            m_lines[event] += line(name, properties.text(3).value_or(QString()));
        }
        SQLiteStatement recurrences = database.prepare(kRecurrences);
        while (recurrences.step())
            m_lines[eventKey(recurrences.text(0), 0)] +=
                recurrences.text(1).value_or(QString()).trimmed().toUtf8() + '\n';
    }

    /// `recurrence`: 0 but for an event that stands in for an occurrence.
    [[nodiscard]] static QString eventKey(const std::optional<QString> &item, qint64 recurrence)
    {
        return item.value_or(QString()) + u'\n' + QString::number(recurrence);
    }

    void addEvent(const SQLiteStatement &event)
    {
        const qint64 recurrence = event.integer(kReplaced);
        const bool isDays = event.integer(2) != 0;
        const auto time = [&](const QByteArray &name, int column) {
            const QString zone = event.text(column + 1).value_or(QString());
            // What is replaced by whole days may have been at a time of its day.
            const bool isDay = isDays && (column != kReplaced || zone == "floating"_L1);
            return timeLine(name, event.integer(column), zone, isDay);
        };
        // Before the event, because a zone may have to be defined.
        const QByteArray start = time("DTSTART", 3);
        const QByteArray end = event.integer(5) != 0 ? time("DTEND", 5) : QByteArray();
        const QByteArray replaced =
            recurrence != 0 ? time("RECURRENCE-ID", kReplaced) : QByteArray();
        m_text += "BEGIN:VEVENT\n" + start + end + replaced
                  + line("UID", event.text(10).value_or(QString()))
                  + line("SUMMARY", event.text(1).value_or(QString()))
                  + line("STATUS", event.text(9).value_or(QString()))
                  + m_lines.value(eventKey(event.text(0), recurrence)) + "END:VEVENT\n";
    }

    QByteArray
    timeLine(const QByteArray &name, qint64 microseconds, const QString &zone, bool isDay)
    {
        const QDateTime time = QDateTime::fromMSecsSinceEpoch(microseconds / 1000, Qt::UTC);
        const QDate day = time.date();
        const QTime clock = time.time();
        if (!day.isValid() || day.year() < 1 || day.year() > 9999)
            return {};
        const QString date = QString::asprintf("%04d%02d%02d", day.year(), day.month(), day.day());
        if (isDay)
            return name + ";VALUE=DATE:" + date.toLatin1() + '\n';
        const QByteArray value =
            date.toLatin1()
            + QString::asprintf("T%02d%02d%02d", clock.hour(), clock.minute(), clock.second())
                  .toLatin1();
        if (zone == "floating"_L1)
            return name + ':' + value + '\n';
        const QByteArray parameter = ";TZID=\"" + zoneName(zone).remove(u'"').toUtf8() + '"';
        return name + (zone.isEmpty() ? QByteArray() : parameter) + ':' + value + "Z\n";
    }

    /// Where Thunderbird does not know the zone by its name, there is its definition.
    QString zoneName(const QString &zone)
    {
        if (!zone.startsWith("BEGIN:"_L1))
            return zone;
        static const QRegularExpression kName(u"^TZID:([^\\r\\n]*)"_s,
                                              QRegularExpression::MultilineOption);
        if (!m_zones.contains(zone)) {
            m_zones.insert(zone);
            m_text += zone.trimmed().toUtf8() + '\n';
        }
        return kName.match(zone).captured(1);
    }

    QHash<QString, QByteArray> m_lines; ///< more of them, of each event
    QSet<QString> m_zones;              ///< that are defined already
    QByteArray m_text;
};

/// The cards of a database, in its order.
QByteArray cardsText(const SQLiteDatabase &database)
{
    static const QHash<QString, QByteArray> kNames{{u"DisplayName"_s, "FN"},
                                                   {u"NickName"_s, "NICKNAME"},
                                                   {u"PrimaryEmail"_s, "EMAIL"},
                                                   {u"SecondEmail"_s, "EMAIL"},
                                                   {u"WorkPhone"_s, "TEL"},
                                                   {u"HomePhone"_s, "TEL"},
                                                   {u"CellularNumber"_s, "TEL"},
                                                   {u"FaxNumber"_s, "TEL"},
                                                   {u"PagerNumber"_s, "TEL"}};
    struct Card
    {
        QString givenName;
        QString familyName;
        QByteArray lines;
        QByteArray whole; ///< since Thunderbird 102
    };
    QList<Card> cards;
    QHash<QString, qsizetype> places;
    qsizetype size = 0;
    SQLiteStatement properties = database.prepare(kCardProperties);
    while (properties.step() && size < kLargestDocument) {
        const QString id = properties.text(0).value_or(QString());
        const QString name = properties.text(1).value_or(QString());
        const QString value = properties.text(2).value_or(QString());
        if (!places.contains(id)) {
            places.insert(id, cards.size());
            cards.append(Card());
        }
        Card &card = cards[places[id]];
        size += value.size();
        if (name == "_vCard"_L1)
            card.whole = value.toUtf8() + '\n';
        else if (name == "FirstName"_L1)
            card.givenName = value;
        else if (name == "LastName"_L1)
            card.familyName = value;
        else if (const auto found = kNames.constFind(name); found != kNames.constEnd())
            card.lines += line(*found, value);
    }
    QByteArray text;
    for (const Card &card : std::as_const(cards)) {
        text += card.whole.isEmpty()
                    ? "BEGIN:VCARD\nN:" + escaped(card.familyName) + ';' + escaped(card.givenName)
                          + '\n' + card.lines + "END:VCARD\n"
                    : card.whole;
    }
    return text;
}

/// The files in a folder, by patterns of their names one after the other.
QStringList filesIn(const QString &folder, const QStringList &patterns)
{
    QStringList paths;
    for (const QString &pattern : patterns) {
        for (const QString &name : QDir(folder).entryList({pattern}, QDir::Files, QDir::Name))
            paths.append(folder + u'/' + name);
    }
    return paths;
}

/// Of the three files that a database may have.
QByteArray stateText(const QString &path)
{
    QByteArray text;
    for (const StoreFileState &file : databaseState(path)) {
        text += QByteArray::number(file.size) + ' ' + QByteArray::number(file.modified) + ' '
                + QByteArray::number(file.inode) + ' ' + file.head.toHex() + '\n';
    }
    return text;
}

using MakeText = QByteArray (*)(const SQLiteDatabase &database);

QList<StoreDocument> documents(const QStringList &paths,
                               const QString &cacheFolder,
                               const QDeadlineTimer &deadline,
                               MakeText makeText)
{
    QList<StoreDocument> found;
    for (const QString &path : paths) {
        const auto text = [=]() -> std::optional<QByteArray> {
            std::optional<QByteArray> made;
            const auto read = [&](SQLiteDatabase &database) {
                // What is no database holds nothing; any other may be read the next time.
                const bool isThere = database.isReadable() || database.isDamaged();
                made = isThere ? std::optional(makeText(database)) : std::nullopt;
            };
            readDatabase(path, cacheFolder, read, deadline);
            return deadline.hasExpired() ? std::nullopt : made;
        };
        found.append({.name = path, .state = stateText(path), .text = text});
    }
    return found;
}

} // namespace

QStringList thunderbirdCalendars(const StandardFolders &folders)
{
    QStringList paths;
    for (const QString &profile : thunderbirdProfiles(folders))
        paths += filesIn(profile + "/calendar-data"_L1, {u"local.sqlite"_s, u"cache.sqlite"_s});
    return paths;
}

QStringList thunderbirdAddressBooks(const StandardFolders &folders)
{
    QStringList paths;
    for (const QString &profile : thunderbirdProfiles(folders))
        paths += filesIn(profile, {u"abook.sqlite"_s, u"abook-*.sqlite"_s, u"history.sqlite"_s});
    return paths;
}

QList<StoreDocument> calendarDocuments(const QStringList &databases,
                                       const QString &cacheFolder,
                                       const QDeadlineTimer &deadline)
{
    return documents(databases, cacheFolder, deadline, [](const SQLiteDatabase &database) {
        return CalendarText(database).text();
    });
}

QList<StoreDocument> addressBookDocuments(const QStringList &databases,
                                          const QString &cacheFolder,
                                          const QDeadlineTimer &deadline)
{
    return documents(databases, cacheFolder, deadline, cardsText);
}

} // namespace dugwise
