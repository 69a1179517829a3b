// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/Formatters.h"
#include "support/LocalZone.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

class TstFormatters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { setZone(u"UTC"_s); }

    void relativeTimes()
    {
        // Zone, now, and what is said of the moments so many seconds from now.
        const QString table = uR"(
UTC|2024-03-31T12:00:00.500Z|0 0 seconds ago|-0.999 0 seconds ago|-1 1 second ago
UTC|2024-03-31T12:00:00.500Z|-59.999 59 seconds ago|-60 1 minute ago
UTC|2024-03-31T12:00:00.500Z|-3599.999 59 minutes ago|-3600 1 hour ago
UTC|2024-03-31T12:00:00.500Z|-86399.999 23 hours ago|-86400 1 day ago
UTC|2024-03-31T12:00:00.500Z|-604799.999 6 days ago|-604800 1 week ago
UTC|2024-03-31T12:00:00.500Z|-2678399.999 4 weeks ago|-2678400 1 month ago
UTC|2024-03-31T12:00:00.500Z|-31622399.999 11 months ago|-31622400 1 year ago
UTC|2024-03-31T12:00:00.500Z|-1711886401.5 54 years ago|0.999 in 0 seconds|1 in 1 second
UTC|2024-03-31T12:00:00.500Z|7199.999 in 1 hour|86400 in 1 day|1e300 in 7975 years
UTC|2024-03-31T12:00:00.500Z|2591999.999 in 4 weeks|2592000 in 1 month
Europe/Berlin|2024-03-31T10:00:00Z|-82800 1 day ago|-82799 22 hours ago
Europe/Berlin|2024-10-27T11:00:00Z|-37800 10 hours ago|-90000 1 day ago|-89999 24 hours ago
America/New_York|2024-03-09T17:00:00Z|82800 in 1 day
Pacific/Auckland|2024-03-30T23:00:00Z|-2678400 1 month ago|-2678399 4 weeks ago
)"_s;
        for (const QString &line : table.split(u'\n', Qt::SkipEmptyParts)) {
            const QStringList cells = line.split(u'|');
            setZone(cells[0]);
            const Instant now = at(cells[1]);
            for (const QString &cell : cells.sliced(2)) {
                const QString offset = cell.section(u' ', 0, 0);
                const Instant then{now.seconds + offset.toDouble()};
                QCOMPARE(offset + u' ' + relativeTime(then, now), cell);
            }
        }
    }

    void otherTexts()
    {
        QCOMPARE(relativeTime({-7200}, {0}, UnitStyle::abbreviated), u"2 hr. ago"_s);
        QCOMPARE(relativeTime({120}, {0}, UnitStyle::abbreviated), u"in 2 min."_s);
        setZone(u"Europe/Berlin"_s);
        const QString told = dateAndTime(at(u"2024-03-05T13:07:59.9Z"_s));
        QVERIFY2(told.contains(u"Mar 5, 2024"_s) && told.contains(u"2:07"_s), qPrintable(told));
        QVERIFY(dateAndTime({1e300}).contains(u"9999"_s));
        QCOMPARE(byteCount(0) + byteCount(999) + byteCount(1000), u"0 bytes999 bytes1.0 kB"_s);
        QCOMPARE(byteCount(2'149'000) + byteCount(0x7FFF'FFFF'FFFF'FFFF), u"2.1 MB9.2 EB"_s);
    }
};

QTEST_GUILESS_MAIN(TstFormatters)
#include "tst_Formatters.moc"
