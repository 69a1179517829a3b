// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Has the stores read folders of broken and hostile calendars and cards with sound ones between
// them: all that is in the sound ones must be found, and nothing be touched.
// usage: fuzz_agenda [COUNT [SEED]]

#include "Platform/Linux/DesktopContactStore.h"
#include "Platform/Linux/DesktopEventStore.h"
#include "TextMutator.h"
#include "support/Fingerprint.h"
#include "support/SampleFiles.h"
#include "support/SampleHome.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <functional>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

constexpr int kFilesPerSoundOne = 20;
/// What a request has no time for is found by a later one.
constexpr int kMostRequests = 40;

const QByteArray kCalendar =
    "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VTIMEZONE\r\nTZID:Island\r\nBEGIN:STANDARD\r\n"
    "DTSTART:19701025T030000\r\nRRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU\r\n"
    "TZOFFSETFROM:+0200\r\nTZOFFSETTO:+0100\r\nEND:STANDARD\r\nBEGIN:DAYLIGHT\r\n"
    "DTSTART:19700329T020000\r\nRRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU\r\n"
    "TZOFFSETFROM:+0100\r\nTZOFFSETTO:+0200\r\nEND:DAYLIGHT\r\nEND:VTIMEZONE\r\n"
    "BEGIN:VEVENT\r\nUID:1\r\nSUMMARY:One\\, two\r\nLOCATION:Gr\xc3\xbc"
    "ner\r\n Saal\r\n"
    "DTSTART;TZID=Island:20260302T090000\r\nDTEND;TZID=Island:20260302T100000\r\n"
    "RRULE:FREQ=MONTHLY;INTERVAL=2;BYDAY=MO,-1FR;UNTIL=20270101T000000Z;WKST=SU\r\n"
    "EXDATE;TZID=\"Europe/Berlin\":20260309T090000,20260316T090000\r\n"
    "RDATE;VALUE=PERIOD:20260403T070000Z/PT1H\r\nBEGIN:VALARM\r\nTRIGGER:-PT15M\r\n"
    "END:VALARM\r\nEND:VEVENT\r\nBEGIN:VEVENT\r\nUID:1\r\nSUMMARY:Moved\r\n"
    "RECURRENCE-ID;TZID=Island:20260501T090000\r\nDTSTART;VALUE=DATE:20260502\r\n"
    "DURATION:P1W\r\nSTATUS:CONFIRMED\r\nEND:VEVENT\r\nBEGIN:VEVENT\r\nUID:2\r\n"
    "DTSTART:20260101T000000Z\r\nRRULE:FREQ=DAILY;COUNT=100;BYHOUR=1,2;BYSETPOS=-1\r\n"
    "END:VEVENT\r\nEND:VCALENDAR\r\n";
const QByteArray kCard =
    "BEGIN:VCARD\r\nVERSION:2.1\r\n"
    "N;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:L=C3=A9=\r\n=\r\n;Ann\r\n"
    "item1.EMAIL;TYPE=\"a,b\";PREF:ann@example.org\r\nTEL;VALUE=uri:tel:+1-555\r\n"
    "PHOTO;ENCODING=b:QUFBQUFB\r\n QUFBQUFB\r\nNICKNAME:Annie\\, dear,A\r\nEND:VCARD\r\n";
const QByteArrayList kParts{"BEGIN:VEVENT\r\n",
                            "END:VEVENT\r\n",
                            "BEGIN:VTIMEZONE\r\n",
                            "END:VCARD\r\n",
                            "BEGIN:VCARD\r\n",
                            "\r\n ",
                            "\r\n",
                            "=\r\n",
                            "\"",
                            ":",
                            ";",
                            ",",
                            "\\",
                            "=",
                            "=C3",
                            "FREQ=SECONDLY",
                            "FREQ=YEARLY",
                            "BYMONTHDAY=30",
                            "BYMONTH=2",
                            "BYYEARDAY=-366",
                            "BYWEEKNO=53",
                            "COUNT=2147483647",
                            "INTERVAL=0",
                            "INTERVAL=-1",
                            "INTERVAL=32767",
                            "UNTIL=00000000",
                            "99999999T999999Z",
                            "P9999999999W",
                            "RSCALE=HEBREW",
                            "SKIP=BACKWARD",
                            "TZID=",
                            "\xff",
                            "+9999",
                            "-0000"};

/// Whether all sound ones are found in the end.
bool areFound(const char *what, qsizetype expected, const std::function<qsizetype()> &count)
{
    QElapsedTimer timer;
    timer.start();
    qsizetype found = 0;
    int requests = 0;
    qint64 longest = 0;
    while (found < expected && requests < kMostRequests) {
        QElapsedTimer request;
        request.start();
        found = count();
        longest = std::max(longest, request.elapsed());
        ++requests;
    }
    std::printf("%lld of %lld %s found, %d requests, %.1f s, the longest %.1f s\n",
                static_cast<long long>(found),
                static_cast<long long>(expected),
                what,
                requests,
                static_cast<double>(timer.elapsed()) / 1000,
                static_cast<double>(longest) / 1000);
    return found == expected;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const int count = QCoreApplication::arguments().value(1, u"1000"_s).toInt();
    const quint64 seed = QCoreApplication::arguments().value(2, u"1"_s).toULongLong();

    const SampleHome home;
    fuzz::TextMutator mutator(kParts, seed);
    int sound = 0;
    for (int i = 0; i < count; ++i) {
        writeFile(home.path(u".calendars/%1 broken.ics"_s.arg(i, 6)), mutator.spoilt(kCalendar));
        writeFile(home.path(u".contacts/%1 broken.vcf"_s.arg(i, 6)), mutator.spoilt(kCard));
        if (i % kFilesPerSoundOne != 0)
            continue;
        ++sound;
        writeFile(home.path(u".calendars/%1 sound.ics"_s.arg(i, 6)),
                  "BEGIN:VEVENT\nSUMMARY:Sound\nDTSTART:20260310T100000Z\n"
                  "RRULE:FREQ=DAILY;COUNT=3\nEND:VEVENT\n");
        writeFile(home.path(u".contacts/%1 sound.vcf"_s.arg(i, 6)),
                  "BEGIN:VCARD\nN:Sound;Quincy\nEND:VCARD\n");
    }
    const QByteArray before = fingerprint(home.folder.path());

    const DesktopEventStore events(home.platform.folders, QStringLiteral(DUGWISE_AGENDA));
    const auto soundEvents = [&] {
        const auto found =
            events.eventsIn({Instant::fromUnix(1'770'000'000), Instant::fromUnix(1'780'000'000)});
        return std::ranges::count(found, u"Sound"_s, &StoredEvent::title);
    };
    const DesktopContactStore contacts(home.platform.folders, QStringLiteral(DUGWISE_AGENDA));
    const auto soundContacts = [&] { return contacts.contactsNamed(u"quincy sound"_s).size(); };
    std::printf("seed %llu\n", seed);
    const bool isWell = areFound("occurrences", 3 * qsizetype{sound}, soundEvents)
                        && areFound("contacts", sound, soundContacts);
    if (fingerprint(home.folder.path()) != before) {
        std::printf("FAILED: files were touched\n");
        return 1;
    }
    return isWell ? 0 : 1;
}
