// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/Formatters.h"

#include <QDateTime>
#include <QTest>

#include <time.h>

#include <limits>

using namespace Qt::StringLiterals;
using namespace dugwise;

namespace {

Instant at(const QString &iso)
{
    const QDateTime time = QDateTime::fromString(iso, Qt::ISODateWithMs);
    return Instant::fromUnix(static_cast<double>(time.toMSecsSinceEpoch()) / 1000);
}

void setZone(const QString &zone)
{
    qputenv("TZ", zone.toLatin1());
    tzset();
}

} // namespace

class TstFormatters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { setZone(u"UTC"_s); }

    void relativeTimes_data()
    {
        QTest::addColumn<QString>("zone");
        QTest::addColumn<QString>("now");
        QTest::addColumn<QString>("then");
        QTest::addColumn<QString>("text");
        const auto rows = [](const QString &zone, const QString &now, const QString &table) {
            for (const QString &line : table.split(u'\n', Qt::SkipEmptyParts)) {
                QTest::newRow(qPrintable(zone + u' ' + line))
                    << zone << now << line.section(u' ', 0, 0) << line.section(u' ', 1);
            }
        };
        rows(u"UTC"_s, u"2024-03-31T12:00:00.500Z"_s, uR"(
2024-03-31T12:00:00.500Z 0 seconds ago
2024-03-31T11:59:59.501Z 0 seconds ago
2024-03-31T11:59:59.500Z 1 second ago
2024-03-31T11:59:00.501Z 59 seconds ago
2024-03-31T11:59:00.500Z 1 minute ago
2024-03-31T11:00:00.501Z 59 minutes ago
2024-03-31T11:00:00.500Z 1 hour ago
2024-03-30T12:00:00.501Z 23 hours ago
2024-03-30T12:00:00.500Z 1 day ago
2024-03-24T12:00:00.501Z 6 days ago
2024-03-24T12:00:00.500Z 1 week ago
2024-02-29T12:00:00.501Z 4 weeks ago
2024-02-29T12:00:00.500Z 1 month ago
2023-03-31T12:00:00.501Z 11 months ago
2023-03-31T12:00:00.500Z 1 year ago
1969-12-31T23:59:59.000Z 54 years ago
2024-03-31T12:00:01.499Z in 0 seconds
2024-03-31T12:00:01.500Z in 1 second
2024-03-31T14:00:00.499Z in 1 hour
2024-04-01T12:00:00.500Z in 1 day
2024-04-30T12:00:00.499Z in 4 weeks
2024-04-30T12:00:00.500Z in 1 month)"_s);
        rows(u"Europe/Berlin"_s, u"2024-03-31T10:00:00Z"_s, uR"(
2024-03-30T11:00:00Z 1 day ago
2024-03-30T11:00:01Z 22 hours ago)"_s);
        rows(u"Europe/Berlin"_s, u"2024-10-27T11:00:00Z"_s, uR"(
2024-10-27T00:30:00Z 10 hours ago
2024-10-26T10:00:00Z 1 day ago
2024-10-26T10:00:01Z 24 hours ago)"_s);
        rows(u"America/New_York"_s, u"2024-03-09T17:00:00Z"_s, u"2024-03-10T16:00:00Z in 1 day"_s);
        rows(u"Pacific/Auckland"_s, u"2024-03-30T23:00:00Z"_s, uR"(
2024-02-28T23:00:00Z 1 month ago
2024-02-28T23:00:01Z 4 weeks ago)"_s);
    }
    void relativeTimes()
    {
        QFETCH(const QString, zone);
        QFETCH(const QString, now);
        QFETCH(const QString, then);
        setZone(zone);
        QTEST(relativeTime(at(then), at(now)), "text");
    }

    void abbreviatedTimes()
    {
        const Instant now = at(u"2024-03-31T12:00:00Z"_s);
        QCOMPARE(relativeTime({now.seconds - 7200}, now, UnitStyle::abbreviated), u"2 hr. ago"_s);
        QCOMPARE(relativeTime({now.seconds + 120}, now, UnitStyle::abbreviated), u"in 2 min."_s);
    }

    void byteCounts()
    {
        QCOMPARE(byteCount(0), u"0 bytes"_s);
        QCOMPARE(byteCount(999), u"999 bytes"_s);
        QCOMPARE(byteCount(1000), u"1.0 kB"_s);
        QCOMPARE(byteCount(2'149'000), u"2.1 MB"_s);
        QCOMPARE(byteCount(std::numeric_limits<qint64>::max()), u"9.2 EB"_s);
    }
};

QTEST_GUILESS_MAIN(TstFormatters)
#include "tst_Formatters.moc"
