// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Reads calendars and address books in folders: a file for each of many events and contacts, one in
// ten of the events weekly; then again when nothing has changed, when one has, and for other spans
// and names; and the same events in Thunderbird's database. "from nothing" is a store that has just
// been made, with its parser yet to be started. usage: bench_calendar [ITEMS [ROUNDS]]

#include "Measure.h"
#include "Platform/Linux/DesktopContactStore.h"
#include "Platform/Linux/DesktopEventStore.h"
#include "support/SampleFiles.h"
#include "support/SampleHome.h"
#include "support/SampleThunderbird.h"

#include <QCoreApplication>

#include <algorithm>
#include <functional>
#include <vector>

using namespace dugwise;
using namespace dugwise::bench;
using namespace dugwise::test;

namespace {

constexpr double kYear = 365 * kDay;
const Instant kNow = Instant::fromUnix(1'790'000'000);

QByteArray event(int number)
{
    const QByteArray id = QByteArray::number(number);
    const QDateTime start = QDateTime::fromSecsSinceEpoch(
        static_cast<qint64>(kNow.unixSeconds()) - qint64{number % 730} * 86'400, Qt::UTC);
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//bench//EN\r\nBEGIN:VEVENT\r\nUID:" + id
           + "@bench\r\nDTSTAMP:20260101T000000Z\r\nCREATED:20260101T000000Z\r\n"
             "LAST-MODIFIED:20260101T000000Z\r\nSEQUENCE:2\r\nSUMMARY:Meeting "
           + id
           + " about the budget\r\nDESCRIPTION:" + QByteArray("Points to talk about. ").repeated(10)
           + "\r\nLOCATION:Room " + id + "\r\nDTSTART;TZID=Europe/Berlin:"
           + start.toString(QStringLiteral("yyyyMMdd'T'HH0000")).toLatin1()
           + "\r\nDURATION:PT1H\r\n" + (number % 10 == 0 ? "RRULE:FREQ=WEEKLY\r\n" : "")
           + "ATTENDEE;CN=Sarah Lee;PARTSTAT=ACCEPTED:mailto:sarah@example.org\r\n"
             "BEGIN:VALARM\r\nACTION:DISPLAY\r\nTRIGGER:-PT15M\r\nDESCRIPTION:Soon\r\n"
             "END:VALARM\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
}

QByteArray card(int number)
{
    const QByteArray id = QByteArray::number(number);
    const QByteArray given = number % 50 == 0 ? QByteArray("Sarah") : "Given" + id;
    return "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:" + id + "\r\nN:Family" + id + ";" + given
           + ";;;\r\nFN:" + given + " Family" + id + "\r\nEMAIL;TYPE=HOME:person" + id
           + "@example.org\r\nTEL;TYPE=CELL:+1 555 " + id
           + "\r\nORG:Example\r\nADR;TYPE=HOME:;;1 Street;Town;;12345;Country\r\n"
             "NOTE:"
           + QByteArray("Something to remember. ").repeated(5) + "\r\nEND:VCARD\r\n";
}

/// The same events as in the files.
void fill(SampleThunderbirdCalendar &calendar, int count)
{
    calendar.run("BEGIN");
    for (int i = 0; i < count; ++i) {
        const QString id = QString::number(i);
        const Instant start = kNow - (i % 730) * kDay;
        calendar.add({.id = id,
                      .title = QStringLiteral("Meeting %1 about the budget").arg(id),
                      .start = start,
                      .end = start - -kHour,
                      .zone = QStringLiteral("Europe/Berlin")});
        calendar.addProperty(id, QStringLiteral("LOCATION"), QStringLiteral("Room ") + id);
        calendar.addProperty(id,
                             QStringLiteral("DESCRIPTION"),
                             QStringLiteral("Points to talk about. ").repeated(10));
        if (i % 10 == 0)
            calendar.addRecurrence(id, QStringLiteral("RRULE:FREQ=WEEKLY"));
    }
    calendar.run("COMMIT");
}

/// `prepare` is not measured.
void measure(const char *what,
             int rounds,
             const std::function<void()> &prepare,
             const std::function<qsizetype()> &run)
{
    std::vector<double> times;
    qsizetype found = 0;
    for (int round = 0; round < rounds; ++round) {
        prepare();
        const Stopwatch watch;
        found = run();
        times.push_back(watch.seconds());
    }
    std::ranges::sort(times);
    std::printf("%s: median %.1f ms, best %.1f ms; %lld found\n",
                what,
                times[times.size() / 2] * 1e3,
                times.front() * 1e3,
                static_cast<long long>(found));
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const int count = QCoreApplication::arguments().value(1, QStringLiteral("5000")).toInt();
    const int rounds = QCoreApplication::arguments().value(2, QStringLiteral("11")).toInt();
    const SampleHome home;
    for (int i = 0; i < count; ++i) {
        const QString name = QString::number(i);
        writeFile(home.path(QStringLiteral(".calendars/home/%1.ics").arg(name)), event(i));
        writeFile(home.path(QStringLiteral(".contacts/home/%1.vcf").arg(name)), card(i));
    }
    const QString parser = QStringLiteral(DUGWISE_AGENDA);
    const auto &folders = home.platform.folders;
    const auto nothing = [] {};
    int changes = 0;

    std::optional<DesktopEventStore> events;
    const auto eventsOf = [&](double from) { return events->eventsIn({kNow - from, kNow}).size(); };
    const auto renewEvents = [&] { events.emplace(folders, parser); };
    const auto changeEvent = [&] {
        writeFile(home.path(QStringLiteral(".calendars/home/0.ics")),
                  event(0) + QByteArray(++changes, '\n'));
    };
    measure("calendar, from nothing", rounds, renewEvents, [&] { return eventsOf(kYear / 2); });
    measure("calendar, the same again", rounds, nothing, [&] { return eventsOf(kYear / 2); });
    measure("calendar, one changed", rounds, changeEvent, [&] { return eventsOf(kYear / 2); });
    measure("calendar, a week", rounds, nothing, [&] { return eventsOf(7 * kDay); });
    measure("calendar, ten years", 1, nothing, [&] { return eventsOf(10 * kYear); });

    std::optional<DesktopContactStore> contacts;
    const auto contactsOf = [&](const char *name) {
        return contacts->contactsNamed(QString::fromLatin1(name)).size();
    };
    const auto renewContacts = [&] { contacts.emplace(folders, parser); };
    const auto changeContact = [&] {
        writeFile(home.path(QStringLiteral(".contacts/home/0.vcf")),
                  card(0) + QByteArray(++changes, '\n'));
    };
    measure("contacts, from nothing", rounds, renewContacts, [&] { return contactsOf("sarah"); });
    measure("contacts, the same again", rounds, nothing, [&] { return contactsOf("sarah"); });
    measure("contacts, one changed", rounds, changeContact, [&] { return contactsOf("sarah"); });
    measure("contacts, none", rounds, nothing, [&] { return contactsOf("quincunx"); });

    const SampleHome thunderbirdHome;
    const QString profile = thunderbirdHome.path(QStringLiteral(".thunderbird/x.default"));
    QDir().mkpath(profile);
    SampleThunderbirdCalendar thunderbird(profile);
    fill(thunderbird, count);
    measure(
        "Thunderbird, from nothing",
        rounds,
        [&] { events.emplace(thunderbirdHome.platform.folders, parser); },
        [&] { return eventsOf(kYear / 2); });
    measure("Thunderbird, the same again", rounds, nothing, [&] { return eventsOf(kYear / 2); });

    QByteArray calendar;
    QByteArray book;
    for (int i = 0; i < count; ++i) {
        calendar += event(i);
        book += card(i);
    }
    const SampleHome single;
    writeFile(single.path(QStringLiteral(".calendars/all.ics")), calendar);
    writeFile(single.path(QStringLiteral(".contacts/all.vcf")), book);
    const auto &singleFolders = single.platform.folders;
    measure(
        "calendar in one file, from nothing",
        rounds,
        [&] { events.emplace(singleFolders, parser); },
        [&] { return eventsOf(kYear / 2); });
    measure(
        "contacts in one file, from nothing",
        rounds,
        [&] { contacts.emplace(singleFolders, parser); },
        [&] { return contactsOf("sarah"); });
    return 0;
}
