// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DesktopEventStore.h"
#include "support/Fingerprint.h"
#include "support/LocalZone.h"
#include "support/SampleFiles.h"
#include "support/SampleHome.h"
#include "support/SampleThunderbird.h"

#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

namespace dugwise::test {

namespace {

constexpr std::chrono::seconds kPatience{60}; // for a busy machine

using DateIntentParser::DateRange;

/// A calendar of components.
QByteArray calendar(const QByteArray &components)
{
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//test//EN\r\n" + components
           + "END:VCALENDAR\r\n";
}

/// An event of content lines, separated by blanks as in "DTSTART:… RRULE:…".
QByteArray vevent(const QByteArray &lines, const QByteArray &title = "Event")
{
    return "BEGIN:VEVENT\r\nSUMMARY:" + title + "\r\n" + QByteArray(lines).replace(" ", "\r\n")
           + "\r\nEND:VEVENT\r\n";
}

/// A zone of our own, an hour ahead of UTC, two in summer.
const QByteArray kZone = "BEGIN:VTIMEZONE\r\nTZID:Island\r\n"
                         "BEGIN:STANDARD\r\nDTSTART:19701025T030000\r\n"
                         "RRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU\r\n"
                         "TZOFFSETFROM:+0200\r\nTZOFFSETTO:+0100\r\nEND:STANDARD\r\n"
                         "BEGIN:DAYLIGHT\r\nDTSTART:19700329T020000\r\n"
                         "RRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU\r\n"
                         "TZOFFSETFROM:+0100\r\nTZOFFSETTO:+0200\r\nEND:DAYLIGHT\r\n"
                         "END:VTIMEZONE\r\n";

DateRange span(const QString &from, const QString &to)
{
    return {at(from + "T00:00:00Z"_L1), at(to + "T00:00:00Z"_L1)};
}

QString told(Instant instant)
{
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(instant.unixSeconds() * 1000),
                                          Qt::UTC)
        .toString(u"yyyy-MM-dd hh:mm"_s);
}

/// "START TITLE" of each, in UTC.
QStringList starts(const QList<StoredEvent> &events)
{
    QStringList lines;
    for (const StoredEvent &event : events)
        lines.append(told(event.start) + u' ' + event.title);
    return lines;
}

} // namespace

class TstDesktopEventStore : public QObject
{
    Q_OBJECT

private:
    std::optional<SampleHome> m_home;
    std::optional<DesktopEventStore> m_store;

    void write(const QString &name, const QByteArray &content) const
    {
        writeFile(m_home->path(u".local/share/calendars/"_s + name), content);
    }
    [[nodiscard]] QStringList find(const QString &from = u"2026-01-01"_s,
                                   const QString &to = u"2027-01-01"_s) const
    {
        return starts(m_store->eventsIn(span(from, to)));
    }

private Q_SLOTS:
    void init()
    {
        setZone(u"UTC"_s);
        m_home.emplace();
        m_store.emplace(m_home->platform.folders, QStringLiteral(DUGWISE_AGENDA), kPatience);
    }

    void readsWhatAnEventHolds()
    {
        QCOMPARE(m_store->sources(), QStringList());
        QCOMPARE(find(), QStringList());
        write(
            u"one.ics"_s,
            calendar("BEGIN:VEVENT\r\nUID:1\r\nSUMMARY:Sarah\\, sync\\n\r\n"
                     "DESCRIPTION;LANGUAGE=en:A long\r\n  story with \"quotes\" \xe2\x80\r\n\t\x94"
                     " and more\r\n"
                     "LOCATION:Gr\xfc"
                     "ner Saal\r\nDTSTART:20260310T140000Z\r\n"
                     "DTEND:20260310T153000Z\r\nBEGIN:VALARM\r\nDESCRIPTION:Alarm\r\n"
                     "SUMMARY:Alarm\r\nEND:VALARM\r\nEND:VEVENT\r\n"
                     "BEGIN:VTODO\r\nSUMMARY:Task\r\nDTSTART:20260310T140000Z\r\nEND:VTODO\r\n"));
        write(u"two.ics"_s, calendar(vevent("DTSTART:20260309T080000Z", "")));
        const StoredEvent whole{.title = u"Sarah, sync\n"_s,
                                .notes = u"A long story with \"quotes\" — and more"_s,
                                .location = u"Grüner Saal"_s,
                                .start = at(u"2026-03-10T14:00:00Z"_s),
                                .end = at(u"2026-03-10T15:30:00Z"_s)};
        const StoredEvent bare{.start = at(u"2026-03-09T08:00:00Z"_s)};
        QCOMPARE(m_store->eventsIn(span(u"2026-03-01"_s, u"2026-04-01"_s)),
                 (QList<StoredEvent>{bare, whole}));
        QCOMPARE(m_store->sources(), QStringList{u"folder ~/.local/share/calendars"_s});
    }

    void knowsWhatOverlaps_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<bool>("overlaps");
        // The span: 10 to 20 March.
        QTest::newRow("before") << QByteArray("DTSTART:20260309T230000Z DTEND:20260309T235959Z")
                                << false;
        QTest::newRow("ends as it begins")
            << QByteArray("DTSTART:20260309T230000Z DTEND:20260310T000000Z") << false;
        QTest::newRow("reaches into it")
            << QByteArray("DTSTART:20260309T230000Z DURATION:PT1H1M") << true;
        QTest::newRow("around it")
            << QByteArray("DTSTART;VALUE=DATE:20250101 DURATION:P500D") << true;
        QTest::newRow("begins as it ends") << QByteArray("DTSTART:20260320T000000Z") << true;
        QTest::newRow("after") << QByteArray("DTSTART:20260320T000001Z") << false;
        QTest::newRow("a moment before") << QByteArray("DTSTART:20260309T235959Z") << false;
        QTest::newRow("a moment at its beginning")
            << QByteArray("DTSTART:20260310T000000Z") << true;
        QTest::newRow("a day before") << QByteArray("DTSTART;VALUE=DATE:20260309") << false;
        QTest::newRow("its first day") << QByteArray("DTSTART;VALUE=DATE:20260310") << true;
        QTest::newRow("an end before the start")
            << QByteArray("DTSTART:20260310T000000Z DTEND:20260101T000000Z") << true;
        QTest::newRow("long and weekly")
            << QByteArray("DTSTART:20250101T000000Z DURATION:P100D RRULE:FREQ=DAILY;COUNT=400")
            << true;
    }
    void knowsWhatOverlaps()
    {
        QFETCH(const QByteArray, lines);
        QFETCH(const bool, overlaps);
        write(u"a.ics"_s, calendar(vevent(lines)));
        QCOMPARE(!find(u"2026-03-10"_s, u"2026-03-20"_s).isEmpty(), overlaps);
    }

    void knowsTimeZones_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("start");
        QTest::newRow("UTC") << QByteArray("DTSTART:20260710T090000Z") << u"2026-07-10 09:00"_s;
        QTest::newRow("the system's")
            << QByteArray("DTSTART;TZID=Europe/Berlin:20260710T090000") << u"2026-07-10 07:00"_s;
        QTest::newRow("in winter")
            << QByteArray("DTSTART;TZID=Europe/Berlin:20260110T090000") << u"2026-01-10 08:00"_s;
        QTest::newRow("a prefix") << QByteArray(
            "DTSTART;TZID=/freeassociation.sourceforge.net/America/New_York:20260710T090000")
                                  << u"2026-07-10 13:00"_s;
        QTest::newRow("quoted") << QByteArray("DTSTART;TZID=\"Asia/Tokyo\":20260710T090000")
                                << u"2026-07-10 00:00"_s;
        QTest::newRow("its own") << QByteArray("DTSTART;TZID=Island:20260710T090000")
                                 << u"2026-07-10 07:00"_s;
        QTest::newRow("UTC in a zone")
            << QByteArray("DTSTART;TZID=Asia/Tokyo:20260710T090000Z") << u"2026-07-10 09:00"_s;
        // New York's time, as the person's own.
        QTest::newRow("floating") << QByteArray("DTSTART:20260710T090000") << u"2026-07-10 13:00"_s;
        QTest::newRow("unknown") << QByteArray("DTSTART;TZID=Nowhere/Land:20260710T090000")
                                 << u"2026-07-10 13:00"_s;
        QTest::newRow("a day") << QByteArray("DTSTART;VALUE=DATE:20260710")
                               << u"2026-07-10 04:00"_s;
        QTest::newRow("a day without saying so")
            << QByteArray("DTSTART:20260110") << u"2026-01-10 05:00"_s;
    }
    void knowsTimeZones()
    {
        QFETCH(const QByteArray, line);
        QFETCH(const QString, start);
        setZone(u"America/New_York"_s);
        write(u"a.ics"_s, calendar(vevent(line) + kZone));
        QCOMPARE(find(), QStringList{start + " Event"_L1});
    }

    void manyZonesLeaveOthersAlone()
    {
        for (int document = 0; document < 6; ++document) {
            QByteArray events;
            for (int zone = 0; zone < 200; ++zone) {
                const QByteArray name = QByteArray::number(document * 200 + zone);
                events += QByteArray(kZone).replace("Island", "Island/" + name)
                          + vevent("DTSTART;TZID=Island/" + name + ":20260710T090000")
                          + vevent("DTSTART;TZID=Nowhere/" + name + ":20260710T090000");
            }
            write(QString::number(document) + ".ics"_L1, calendar(events));
        }
        write(u"last.ics"_s,
              calendar(vevent("DTSTART;TZID=Asia/Tokyo:20260711T090000")
                       + vevent("DTSTART;TZID=Mine:20260711T090000")
                       + QByteArray(kZone).replace("Island", "Mine")));
        QCOMPARE(find(u"2026-07-10"_s, u"2026-07-11"_s).filter(u"07-10 07:00"_s).size(), 1200);
        QCOMPARE(find(u"2026-07-11"_s, u"2026-07-12"_s),
                 (QStringList{u"2026-07-11 00:00 Event"_s, u"2026-07-11 07:00 Event"_s}));
    }

    void endlessZonesCostNobodyElse()
    {
        QByteArray list("0");
        for (int i = 1; i < 60; ++i)
            list += ',' + QByteArray::number(i);
        const QByteArray rule =
            "FREQ=YEARLY;BYDAY=MO,TU,WE,TH,FR;BYMINUTE=" + list + ";BYSECOND=" + list;
        const QByteArray endless =
            QByteArray(kZone).replace("FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU", rule);
        write(u"a.ics"_s,
              calendar(endless + vevent("DTSTART;TZID=Island:20260310T090000", "Odd")
                       + vevent("DTSTART:20260310T140000Z", "Good")));
        m_store.emplace(m_home->platform.folders, QStringLiteral(DUGWISE_AGENDA));
        QVERIFY(find().contains(u"2026-03-10 14:00 Good"_s));

        // Harmless ones since the year 1, one after the other.
        const QByteArray rules = QByteArray("RRULE:FREQ=YEARLY;BYDAY=MO,TU,WE,TH,FR,SA,SU;"
                                            "BYHOUR=1,2\r\n")
                                     .repeated(15);
        write(u"a.ics"_s,
              calendar(QByteArray(kZone)
                           .replace("DTSTART:1970", "DTSTART:0001")
                           .replace("RRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU\r\n", rules)
                       + vevent("DTSTART;TZID=Island:20260310T090000", "Odd")
                       + vevent("DTSTART:20260310T150000Z", "Better")));
        QStringList found;
        for (int request = 0; request < 10 && found.isEmpty(); ++request)
            found = find().filter(u"Better"_s);
        QCOMPARE(found, QStringList{u"2026-03-10 15:00 Better"_s});
    }

    void findsOccurrences_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<QStringList>("days"); // of March and later, at 9 in Berlin
        QTest::newRow("weekly, over the change of clocks")
            << QByteArray("RRULE:FREQ=WEEKLY;COUNT=4")
            << QStringList{u"03-18 08"_s, u"03-25 08"_s, u"04-01 07"_s, u"04-08 07"_s};
        QTest::newRow("until, in UTC") << QByteArray("RRULE:FREQ=DAILY;UNTIL=20260320T080000Z")
                                       << QStringList{u"03-18 08"_s, u"03-19 08"_s, u"03-20 08"_s};
        QTest::newRow("until a day") << QByteArray("RRULE:FREQ=DAILY;UNTIL=20260319")
                                     << QStringList{u"03-18 08"_s, u"03-19 08"_s};
        QTest::newRow("every second month's last Friday")
            << QByteArray("RRULE:FREQ=MONTHLY;INTERVAL=2;BYDAY=-1FR;UNTIL=20260801T000000Z")
            << QStringList{u"03-18 08"_s, u"03-27 08"_s, u"05-29 07"_s, u"07-31 07"_s};
        QTest::newRow("without some")
            << QByteArray("RRULE:FREQ=DAILY;COUNT=5 EXDATE;TZID=Europe/Berlin:20260319T090000 "
                          "EXDATE:20260320T080000Z,20260321T080000Z")
            << QStringList{u"03-18 08"_s, u"03-22 08"_s};
        QTest::newRow("without one, on its clocks")
            << QByteArray("RRULE:FREQ=DAILY;COUNT=2 EXDATE:20260318T090000")
            << QStringList{u"03-19 08"_s};
        QTest::newRow("without a day")
            << QByteArray("RRULE:FREQ=DAILY;COUNT=2 EXDATE:20260318") << QStringList{u"03-19 08"_s};
        QTest::newRow("without a rule's")
            << QByteArray("RRULE:FREQ=DAILY;COUNT=5 EXRULE:FREQ=DAILY;INTERVAL=2")
            << QStringList{u"03-19 08"_s, u"03-21 08"_s};
        QTest::newRow("dates") << QByteArray(
            "RDATE;TZID=Europe/Berlin:20260401T100000,20260402T100000 "
            "RDATE;VALUE=PERIOD:20260403T070000Z/PT1H")
                               << QStringList{
                                      u"03-18 08"_s, u"04-01 08"_s, u"04-02 08"_s, u"04-03 07"_s};
        QTest::newRow("Hebrew months") // from 29 Adar to 29 Nisan 5786
            << QByteArray("RRULE:RSCALE=HEBREW;FREQ=MONTHLY;COUNT=2")
            << QStringList{u"03-18 08"_s, u"04-16 07"_s};
        QTest::newRow("two rules")
            << QByteArray("RRULE:FREQ=DAILY;COUNT=2 RRULE:FREQ=DAILY;INTERVAL=3;COUNT=2")
            << QStringList{u"03-18 08"_s, u"03-19 08"_s, u"03-21 08"_s};
        QTest::newRow("no rule at all")
            << QByteArray("RRULE:FREQ=SOMETIMES") << QStringList{u"03-18 08"_s};
        QTest::newRow("never again") << QByteArray("RRULE:FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30")
                                     << QStringList{u"03-18 08"_s};
    }
    void findsOccurrences()
    {
        QFETCH(const QByteArray, lines);
        QFETCH(const QStringList, days);
        write(
            u"a.ics"_s,
            calendar(vevent("DTSTART;TZID=Europe/Berlin:20260318T090000 DURATION:PT1H " + lines)));
        QStringList expected;
        for (const QString &day : days)
            expected.append("2026-"_L1 + day + ":00 Event"_L1);
        QCOMPARE(find(), expected);
        // In another span, and in the first again.
        QCOMPARE(find(u"2020-01-01"_s, u"2026-03-18"_s), QStringList());
        QCOMPARE(find(), expected);
    }

    void findsOccurrencesLongAfterTheFirst_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<QString>("expected");
        QTest::newRow("weekly") << QByteArray("DTSTART:20010103T100000Z RRULE:FREQ=WEEKLY")
                                << u"2026-03-11 10:00"_s;
        QTest::newRow("every fifth week")
            << QByteArray("DTSTART:20001227T100000Z RRULE:FREQ=WEEKLY;INTERVAL=5")
            << u"2026-03-11 10:00"_s; // 263 times five weeks later
        QTest::newRow("a birthday")
            << QByteArray("DTSTART;VALUE=DATE:19500312 RRULE:FREQ=YEARLY") << u"2026-03-12 00:00"_s;
        QTest::newRow("counted") << QByteArray(
            "DTSTART:20010103T100000Z RRULE:FREQ=WEEKLY;COUNT=1316")
                                 << u"2026-03-11 10:00"_s;
        QTest::newRow("local time")
            << QByteArray("DTSTART;TZID=Island:20010103T100000 RRULE:FREQ=WEEKLY")
            << u"2026-03-11 09:00"_s;
        for (const auto &[rule, expected] :
             {std::pair("FREQ=MINUTELY;INTERVAL=7001", "2026-03-11 22:52"),
              std::pair("FREQ=HOURLY;INTERVAL=97", "2026-03-12 06:00"),
              std::pair("FREQ=DAILY;INTERVAL=6", "2026-03-11 10:00"),
              std::pair("FREQ=MONTHLY;INTERVAL=151;BYMONTHDAY=11", "2026-03-11 10:00"),
              std::pair("FREQ=YEARLY;INTERVAL=5;BYMONTH=3;BYMONTHDAY=11", "2026-03-11 10:00")})
            QTest::newRow(rule) << "DTSTART:20010103T100000Z RRULE:" + QByteArray(rule)
                                << QString::fromUtf8(expected);
    }
    void findsOccurrencesLongAfterTheFirst()
    {
        QFETCH(const QByteArray, lines);
        QFETCH(const QString, expected);
        write(u"a.ics"_s, calendar(kZone + vevent(lines)));
        QCOMPARE(find(u"2026-03-10"_s, u"2026-03-13"_s), QStringList{expected + " Event"_L1});
    }

    void exceptsTimesFromDays()
    {
        write(u"a.ics"_s,
              calendar(vevent("DTSTART;VALUE=DATE:20260301 RRULE:FREQ=DAILY;COUNT=3 "
                              "EXDATE;TZID=Europe/Berlin:20260302T000000")));
        QCOMPARE(find(), (QStringList{u"2026-03-01 00:00 Event"_s, u"2026-03-03 00:00 Event"_s}));
    }

    void replacesOccurrences()
    {
        write(u"a.ics"_s,
              calendar(vevent("UID:1 DTSTART;TZID=Europe/Berlin:20260302T090000 "
                              "RRULE:FREQ=WEEKLY;COUNT=4",
                              "Weekly")
                       + vevent("UID:1 RECURRENCE-ID;TZID=Europe/Berlin:20260309T090000 "
                                "DTSTART;TZID=Europe/Berlin:20260610T110000",
                                "Moved")
                       + vevent("UID:1 RECURRENCE-ID:20260316T080000Z DTSTART:20260316T080000Z "
                                "STATUS:CANCELLED",
                                "Cancelled")
                       + vevent("UID:2 DTSTART:20260317T080000Z STATUS:CANCELLED")));
        QCOMPARE(find(),
                 (QStringList{u"2026-03-02 08:00 Weekly"_s,
                              u"2026-03-23 08:00 Weekly"_s,
                              u"2026-06-10 09:00 Moved"_s}));
    }

    void replacesAllLaterOccurrences()
    {
        const QByteArray weekly = vevent("UID:1 DTSTART;TZID=Europe/Berlin:20260302T090000 "
                                         "DURATION:PT1H RRULE:FREQ=WEEKLY;COUNT=9",
                                         "Weekly");
        // From 16 March on four days and an hour later, over the change of clocks.
        const QByteArray later = vevent("UID:1 RECURRENCE-ID;RANGE=THISANDFUTURE:20260316T080000Z "
                                        "DTSTART;TZID=Europe/Berlin:20260320T100000 DURATION:PT2H",
                                        "Later");
        const QByteArray one = vevent("UID:1 RECURRENCE-ID:20260323T080000Z "
                                      "DTSTART:20260323T080000Z",
                                      "Once");
        const QByteArray none = vevent("UID:1 "
                                       "RECURRENCE-ID;RANGE=THISANDFUTURE;TZID=Europe/Berlin:"
                                       "20260420T090000 DTSTART:20260420T070000Z STATUS:CANCELLED");
        const QStringList expected{u"2026-03-02 08:00 Weekly"_s,
                                   u"2026-03-09 08:00 Weekly"_s,
                                   u"2026-03-20 09:00 Later"_s,
                                   u"2026-03-23 08:00 Once"_s,
                                   u"2026-04-03 08:00 Later"_s,
                                   u"2026-04-10 08:00 Later"_s,
                                   u"2026-04-17 08:00 Later"_s};
        write(u"a.ics"_s, calendar(none + later + weekly + one));
        QCOMPARE(find(), expected);
        QCOMPARE(find(u"2026-04-10"_s, u"2026-04-11"_s), expected.mid(5, 1));
        const StoredEvent last = m_store->eventsIn(span(u"2026-04-17"_s, u"2026-04-18"_s)).value(0);
        QCOMPARE(last.end, at(u"2026-04-17T10:00:00Z"_s));

        write(u"a.ics"_s,
              calendar(vevent("UID:2 DTSTART;VALUE=DATE:20260301 RRULE:FREQ=DAILY", "Days")
                       + vevent("UID:2 RECURRENCE-ID;VALUE=DATE;RANGE=THISANDFUTURE:20260303 "
                                "DTSTART:20260303T180000Z",
                                "Evenings")));
        QCOMPARE(find().mid(0, 4),
                 (QStringList{u"2026-03-01 00:00 Days"_s,
                              u"2026-03-02 00:00 Days"_s,
                              u"2026-03-03 18:00 Evenings"_s,
                              u"2026-03-04 18:00 Evenings"_s}));
        QCOMPARE(find(u"2026-05-01"_s, u"2026-05-02"_s),
                 QStringList{u"2026-05-01 18:00 Evenings"_s});
    }

    void countsAnEventOnce()
    {
        const QByteArray one = vevent("UID:1 DTSTART:20260310T140000Z RRULE:FREQ=DAILY;COUNT=2");
        write(u"home/a.ics"_s, calendar(one));
        write(u"work/b.ics"_s,
              calendar(one + vevent("DTSTART:20260310T140000Z", "No UID")
                       + vevent("UID:2 DTSTART:20260310T140000Z", "Other")));
        QCOMPARE(find(),
                 (QStringList{u"2026-03-10 14:00 Event"_s,
                              u"2026-03-10 14:00 No UID"_s,
                              u"2026-03-10 14:00 Other"_s,
                              u"2026-03-11 14:00 Event"_s}));
    }

    void readsFoldersThatKhalKnows()
    {
        const QByteArray one = vevent("DTSTART:20260310T140000Z");
        qputenv("DUGWISE_TEST_CALENDARS", m_home->path(u"elsewhere"_s).toUtf8());
        writeFile(m_home->path(u".config/khal/config"_s),
                  "[default]\npath = ~/never\n[calendars]\n [[home]]\n  path = ~/khal/home/\n"
                  "  color = dark green\n [[more]]\npath=\"$DUGWISE_TEST_CALENDARS/*/cal/\"\n"
                  "type = discover\n[[noted]]\npath = ~/noted  # mine\n[[quoted]]\npath = '~/a # "
                  "b' # mine\n"
                  "[[same]]\npath = ~/.calendars/\n[[none]]\npath = ~/missing\n"
                  "[locale]\npath = ~/never\n");
        for (const QString &file : {u"khal/home/a.ics"_s,
                                    u"elsewhere/x/cal/y/b.ics"_s,
                                    u"elsewhere/x/b.ics"_s,
                                    u"noted/d.ics"_s,
                                    u"a # b/e.ics"_s,
                                    u".calendars/c/c.ics"_s,
                                    u"never/d.ics"_s,
                                    u".calendars/c/.hidden.ics"_s,
                                    u".calendars/c/e.ics.tmp"_s})
            writeFile(m_home->path(file),
                      calendar(vevent("DTSTART:20260310T140000Z", file.toUtf8())));
        const QString when = u"2026-03-10 14:00 "_s;
        QCOMPARE(find(),
                 (QStringList{when + ".calendars/c/c.ics"_L1,
                              when + "khal/home/a.ics"_L1,
                              when + "elsewhere/x/cal/y/b.ics"_L1,
                              when + "noted/d.ics"_L1,
                              when + "a # b/e.ics"_L1}));
        QCOMPARE(m_store->sources(),
                 (QStringList{u"folder ~/.calendars"_s,
                              u"folder ~/khal/home"_s,
                              u"folder ~/elsewhere/x/cal"_s,
                              u"folder ~/noted"_s,
                              u"folder ~/a # b"_s}));
    }

    void followsChanges()
    {
        write(u"a.ics"_s, calendar(vevent("DTSTART:20260310T140000Z", "A")));
        write(u"b.ics"_s,
              calendar(vevent("DTSTART:20260310T150000Z RRULE:FREQ=DAILY;COUNT=1", "B")));
        QCOMPARE(find(), (QStringList{u"2026-03-10 14:00 A"_s, u"2026-03-10 15:00 B"_s}));
        write(u"a.ics"_s, calendar(vevent("DTSTART:20260310T160000Z", "Later")));
        write(u"0.ics"_s, calendar(vevent("DTSTART:20260310T170000Z", "New")));
        QCOMPARE(find(),
                 (QStringList{u"2026-03-10 15:00 B"_s,
                              u"2026-03-10 16:00 Later"_s,
                              u"2026-03-10 17:00 New"_s}));
        QVERIFY(QFile::remove(m_home->path(u".local/share/calendars/b.ics"_s)));
        QCOMPARE(find(), (QStringList{u"2026-03-10 16:00 Later"_s, u"2026-03-10 17:00 New"_s}));
    }

    void leavesOutWhatIsBroken_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("found");
        const QByteArray good = vevent("DTSTART:20260310T140000Z", "Good");
        const QStringList one{u"2026-03-10 14:00 Good"_s};
        QTest::newRow("nothing") << QByteArray() << QStringList();
        QTest::newRow("no calendar") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0:", 12) << QStringList();
        QTest::newRow("cut off") << good + vevent("DTSTART:20260310T150000Z").chopped(9) << one;
        QTest::newRow("never ended") << "BEGIN:VEVENT\nDTSTART:20260310T150000Z\n" + good << one;
        QTest::newRow("alarm never ended")
            << vevent("DTSTART:20260310T150000Z BEGIN:VALARM").replace("Event", "Bad") + good
            << QStringList{one + QStringList{u"2026-03-10 15:00 Bad"_s}};
        for (const auto *const line : {"DTSTART:20260230T100000Z",
                                       "DTSTART:20261301T100000Z",
                                       "DTSTART:20260310T250000Z",
                                       "DTSTART:2026-03-10",
                                       "DTSTART:-2026031",
                                       "DTSTART:",
                                       "DTSTART",
                                       "DTEND:20260310T100000Z"})
            QTest::newRow(line) << vevent(line) + good << one;
        QTest::newRow("bare line feeds") << QByteArray(good).replace("\r\n", "\n") << one;
        QTest::newRow("folded ten thousand times")
            << QByteArray(good).replace("Good", "G" + QByteArray("\r\n ").repeated(10'000) + "ood")
            << one;
        QTest::newRow("text of ten megabytes") << QByteArray(good).replace(
            "DTSTART", "DESCRIPTION:" + QByteArray(10'000'000, 'x') + "\r\nDTSTART")
                                               << one;
        QTest::newRow("control characters") << QByteArray(good).replace("Good", "Go\x1e\x1f\x1dod")
                                            << QStringList{u"2026-03-10 14:00 Go   od"_s};
        QTest::newRow("a zone without sense")
            << "BEGIN:VTIMEZONE\r\nTZID:Odd\r\nBEGIN:STANDARD\r\nDTSTART:19700101T000000\r\n"
               "RRULE:FREQ=SECONDLY\r\nTZOFFSETFROM:+9999\r\nTZOFFSETTO:x\r\nEND:STANDARD\r\n"
               "END:VTIMEZONE\r\n"
                   + vevent("DTSTART;TZID=Odd:20260310T150000", "Odd") + good
            << QStringList{one + QStringList{u"2026-03-10 15:00 Odd"_s}};
    }
    void leavesOutWhatIsBroken()
    {
        QFETCH(const QByteArray, content);
        QFETCH(const QStringList, found);
        write(u"a.ics"_s, content);
        write(u"b.ics"_s, calendar(vevent("DTSTART:20260401T000000Z", "Last")));
        QCOMPARE(find(), found + QStringList{u"2026-04-01 00:00 Last"_s});
    }

    void endlessRecurrencesCostNobodyElse()
    {
        QByteArray endless = vevent("DTSTART:19700101T000000Z RRULE:FREQ=SECONDLY", "Seconds");
        endless += vevent("DTSTART:20260301T000000Z RRULE:FREQ=MINUTELY;BYMONTH=3", "Minutes");
        // Nothing that there ever is, looked for without an end.
        endless += vevent("DTSTART:20260301T000000Z "
                          "RRULE:FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30",
                          "Once");
        endless += vevent("DTSTART:20260302T000000Z RRULE:FREQ=DAILY;COUNT=2", "Daily");
        write(u"a.ics"_s, calendar(endless));
        m_store.emplace(m_home->platform.folders, QStringLiteral(DUGWISE_AGENDA));
        QStringList found;
        for (int request = 0; request < 30 && !found.contains(u"2026-03-03 00:00 Daily"_s);
             ++request)
            found = find(u"2026-03-01"_s, u"2026-03-05"_s);
        QVERIFY(found.contains(u"2026-03-02 00:00 Daily"_s));
        QVERIFY(found.contains(u"2026-03-03 00:00 Daily"_s));
        QVERIFY(found.size() < 20'000);
    }

    void whatTakesLongComesLast()
    {
        constexpr int kEndless = 20;
        QByteArray events;
        for (int i = 0; i < kEndless; ++i)
            events += vevent("DTSTART:20260301T000000Z "
                             "RRULE:FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30");
        events += vevent("DTSTART:20260302T000000Z RRULE:FREQ=DAILY;COUNT=2", "Daily");
        write(u"a.ics"_s, calendar(events));
        m_store.emplace(m_home->platform.folders,
                        QStringLiteral(DUGWISE_AGENDA),
                        std::chrono::milliseconds(500));
        QStringList found;
        for (int request = 0; request < kEndless && found.isEmpty(); ++request)
            found = find().filter(u"03-03 00:00 Daily"_s);
        QCOMPARE(found.size(), 1);
    }

    void findsTheLastOfManyOccurrences()
    {
        write(u"a.ics"_s, calendar(vevent("DTSTART:20250101T000000Z RRULE:FREQ=HOURLY", "Hourly")));
        QCOMPARE(find(u"2026-01-01"_s, u"2026-07-01"_s).size(), 181 * 24 + 1);
        write(u"b.ics"_s,
              calendar(
                  vevent("DTSTART;VALUE=DATE:20200101 DURATION:P3000D RRULE:FREQ=YEARLY", "Long")));
        QCOMPARE(find(u"2026-09-01"_s, u"2026-09-02"_s).filter(u"Hourly"_s).size(), 25);
        QCOMPARE(find(u"2026-09-01"_s, u"2026-09-02"_s).filter(u"Long"_s).size(), 7);
    }

    void manyOccurrencesDoNotFillTheMemory()
    {
        write(u"a.ics"_s,
              calendar(vevent("DTSTART:20250101T000000Z RRULE:FREQ=HOURLY", "Hourly").repeated(100)
                       + vevent("DTSTART:20260105T000000Z RRULE:FREQ=WEEKLY", "Weekly")));
        const QStringList found = find(u"2026-01-01"_s, u"2026-07-01"_s);
        QVERIFY(found.size() > 100'000);
        QVERIFY(found.size() < 250'000);
        QCOMPARE(found.filter(u"Weekly"_s).size(), 26);
    }

    void keepsTheFirstOfWhatItsParserDiesOver()
    {
        // libical 3.0.16 does; others find more.
        write(u"a.ics"_s,
              calendar(vevent("DTSTART:20260218T080000Z RRULE:FREQ=YEARLY;INTERVAL=3;BYWEEKNO=53",
                              "Rare")
                       + vevent("DTSTART:20260319T080000Z RRULE:FREQ=DAILY;COUNT=1", "Other")));
        QCOMPARE(find().mid(0, 2),
                 (QStringList{u"2026-02-18 08:00 Rare"_s, u"2026-03-19 08:00 Other"_s}));
    }

    void readsLaterWhatCouldNotBeCopied()
    {
        const QString profile = m_home->path(u".thunderbird/x.default"_s);
        QVERIFY(QDir().mkpath(profile));
        SampleThunderbirdCalendar thunderbird(profile);
        thunderbird.add({.id = u"1"_s, .title = u"T"_s, .start = at(u"2026-05-01T09:00:00Z"_s)});
        const QString cache = m_home->platform.folders.cache;
        QDir(cache).removeRecursively();
        writeFile(cache, "no folder");
        QCOMPARE(find(), QStringList());
        QVERIFY(QFile::remove(cache));
        QCOMPARE(find(), QStringList{u"2026-05-01 09:00 T"_s});
    }

    void readsThunderbird()
    {
        const QString profile = m_home->path(u".thunderbird/x.default"_s);
        QVERIFY(QDir().mkpath(profile));
        SampleThunderbirdCalendar local(profile);
        const auto start = [](const QString &time) { return at("2026-"_L1 + time + ":00Z"_L1); };
        const Instant weekly = start(u"03-23T08:00"_s);
        const QString berlin = u"Europe/Berlin"_s;
        local.add({.id = u"1"_s,
                   .title = u"Plain; with, commas\\"_s,
                   .start = start(u"03-10T14:00"_s),
                   .end = start(u"03-10T15:00"_s)});
        local.addProperty(u"1"_s, u"LOCATION"_s, u"Room 1\nEND:VEVENT"_s);
        local.addProperty(u"1"_s, u"DESCRIPTION"_s, u"About; it"_s);
        local.add({.id = u"2"_s,
                   .title = u"Weekly"_s,
                   .start = weekly,
                   .end = start(u"03-23T09:00"_s),
                   .zone = berlin});
        local.addRecurrence(u"2"_s, u"RRULE:FREQ=WEEKLY;COUNT=4"_s);
        local.addRecurrence(u"2"_s, u"EXDATE;TZID=Europe/Berlin:20260413T090000"_s);
        const Instant replaced = start(u"03-30T07:00"_s); // by then clocks are set forward
        const QByteArray recurrence = SampleThunderbirdCalendar::time(replaced);
        local.add({.id = u"2"_s,
                   .title = u"Moved"_s,
                   .start = start(u"03-31T10:00"_s),
                   .end = start(u"03-31T11:00"_s),
                   .zone = berlin,
                   .recurrenceId = recurrence});
        local.addProperty(u"2"_s, u"LOCATION"_s, u"Elsewhere"_s, recurrence);
        local.add({.id = u"8"_s,
                   .title = u"Early"_s,
                   .start = start(u"01-05T22:00"_s), // the 6th in Tokyo
                   .end = start(u"01-05T23:00"_s),
                   .zone = u"Asia/Tokyo"_s});
        local.addRecurrence(u"8"_s, u"RRULE:FREQ=DAILY;COUNT=2"_s);
        local.add({.id = u"8"_s,
                   .title = u"All day"_s,
                   .start = start(u"01-07T00:00"_s),
                   .end = start(u"01-08T00:00"_s),
                   .zone = u"floating"_s,
                   .recurrenceId = SampleThunderbirdCalendar::time(start(u"01-06T22:00"_s)),
                   .recurrenceZone = u"Asia/Tokyo"_s,
                   .flags = 8});
        local.add({.id = u"3"_s,
                   .title = u"Floating"_s,
                   .start = start(u"05-01T09:00"_s),
                   .end = start(u"05-01T10:00"_s),
                   .zone = u"floating"_s});
        local.add({.id = u"4"_s,
                   .title = u"Days"_s,
                   .start = start(u"05-02T00:00"_s),
                   .end = start(u"05-04T00:00"_s),
                   .zone = u"floating"_s,
                   .flags = 8});
        local.add({.id = u"5"_s,
                   .title = u"Island"_s,
                   .start = start(u"06-01T08:00"_s),
                   .end = start(u"06-01T08:00"_s),
                   .zone = QString::fromUtf8(kZone)});
        local.addRecurrence(u"5"_s, u"RRULE:FREQ=MONTHLY;INTERVAL=6;COUNT=2"_s);
        for (const auto &[status, journal] :
             {std::pair(u"CANCELLED"_s, "NULL"), std::pair(u""_s, "4")})
            local.add({.id = u"6"_s,
                       .title = u"Gone"_s,
                       .start = weekly,
                       .end = weekly,
                       .status = status,
                       .journal = journal});
        SampleThunderbirdCalendar cache(profile, u"cache"_s);
        cache.run("PRAGMA locking_mode = EXCLUSIVE");
        cache.add({.id = u"1"_s, .title = u"Twice"_s, .start = start(u"03-10T14:00"_s)});
        cache.add({.id = u"7"_s, .title = u"Remote"_s, .start = start(u"07-01T14:00"_s)});

        setZone(u"America/New_York"_s);
        const QList<StoredEvent> events = m_store->eventsIn(span(u"2026-01-01"_s, u"2027-01-01"_s));
        QCOMPARE(starts(events),
                 (QStringList{u"2026-01-05 22:00 Early"_s,
                              u"2026-01-07 05:00 All day"_s,
                              u"2026-03-10 14:00 Plain; with, commas\\"_s,
                              u"2026-03-23 08:00 Weekly"_s,
                              u"2026-03-31 10:00 Moved"_s,
                              u"2026-04-06 07:00 Weekly"_s,
                              u"2026-05-01 13:00 Floating"_s,
                              u"2026-05-02 04:00 Days"_s,
                              u"2026-06-01 08:00 Island"_s,
                              u"2026-07-01 14:00 Remote"_s,
                              u"2026-12-01 09:00 Island"_s}));
        QCOMPARE(events[2].location, u"Room 1\nEND:VEVENT"_s);
        QCOMPARE(events[2].notes, u"About; it"_s);
        QCOMPARE(events[2].end, start(u"03-10T15:00"_s));
        QCOMPARE(events[3].location, QString());
        QCOMPARE(events[4].location, u"Elsewhere"_s);
        QCOMPARE(events[7].end, start(u"05-04T04:00"_s));
        QCOMPARE(m_store->sources(), QStringList{u"Thunderbird"_s});

        // While it is being written.
        local.run("BEGIN; DELETE FROM cal_events WHERE id <> '3'; COMMIT; BEGIN IMMEDIATE");
        QCOMPARE(find(u"2026-04-20"_s, u"2026-05-03"_s),
                 QStringList{u"2026-05-01 13:00 Floating"_s});
    }

    void changesNothing()
    {
        write(u"a.ics"_s, calendar(vevent("DTSTART:20260310T140000Z")));
        const QString profile = m_home->path(u".thunderbird/x.default"_s);
        QVERIFY(QDir().mkpath(profile));
        SampleThunderbirdCalendar thunderbird(profile);
        thunderbird.add({.id = u"1"_s, .title = u"T"_s, .start = at(u"2026-05-01T09:00:00Z"_s)});
        const QByteArray before = fingerprint(m_home->folder.path());
        QCOMPARE(find().size(), 2);
        QCOMPARE(m_store->sources().size(), 2);
        // But for a place of our own.
        QVERIFY(QDir(m_home->path(u".cache"_s)).removeRecursively());
        QCOMPARE(fingerprint(m_home->folder.path()), before);
    }

    void otherSchemasGiveNothing_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("no database") << QByteArray("Not a database at all, whatever its name.");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("head") << QByteArray("SQLite format 3\0", 16) + QByteArray(2000, '\x7f');
    }
    void otherSchemasGiveNothing()
    {
        QFETCH(const QByteArray, content);
        const QString profile = m_home->path(u".thunderbird/x.default"_s);
        writeFile(profile + u"/calendar-data/local.sqlite"_s, content);
        SampleDatabase other(
            profile + u"/calendar-data/cache.sqlite"_s,
            "CREATE TABLE cal_events (id TEXT); INSERT INTO cal_events VALUES (1)");
        write(u"a.ics"_s, calendar(vevent("DTSTART:20260310T140000Z")));
        QCOMPARE(find(), QStringList{u"2026-03-10 14:00 Event"_s});
    }

    void readsLaterWhatItsParserDiedOver()
    {
        write(u"a.ics"_s, calendar(vevent("DTSTART:20260310T140000Z")));
        const QString script = m_home->path(u"parser"_s);
        const QByteArray marker = m_home->path(u"started"_s).toUtf8();
        writeFile(script,
                  "#!/bin/sh\nif [ -e '" + marker + "' ]; then exec '" DUGWISE_AGENDA "'; fi\n: > '"
                      + marker + "'\nexit 1\n");
        QVERIFY(QFile::setPermissions(script, QFile::ReadOwner | QFile::ExeOwner));
        m_store.emplace(m_home->platform.folders, script, kPatience);
        QCOMPARE(find(), QStringList());
        QCOMPARE(find(), QStringList{u"2026-03-10 14:00 Event"_s});
    }

    void withoutItsParserThereIsNothing()
    {
        write(u"a.ics"_s, calendar(vevent("DTSTART:20260310T140000Z")));
        m_store.emplace(m_home->platform.folders, u"/nonexistent"_s);
        QCOMPARE(find(), QStringList());
        m_store.emplace(m_home->platform.folders, u"/bin/true"_s);
        QCOMPARE(find(), QStringList());
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstDesktopEventStore)
#include "tst_DesktopEventStore.moc"
