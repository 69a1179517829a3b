// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/DateIntentParser.h"

#include <QDateTime>
#include <QTest>

#include <time.h>

using namespace Qt::StringLiterals;
using namespace dugwise;

namespace {

QDateTime utc(const QString &iso)
{
    return QDateTime::fromString(iso, Qt::ISODateWithMs);
}
QDateTime utc(Instant instant)
{
    const auto milliseconds = qRound64(instant.unixSeconds() * 1000);
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
}
Instant at(const QString &iso)
{
    return Instant::fromUnix(static_cast<double>(utc(iso).toMSecsSinceEpoch()) / 1000);
}

void setZone(const QString &zone)
{
    qputenv("TZ", zone.toLatin1());
    tzset();
}

} // namespace

class TstDateIntentParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { setZone(u"UTC"_s); }

    void knowsPhrases_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("start");
        const auto rows = [](const QString &start, const QString &texts) {
            for (const QString &text : texts.split(u'|'))
                QTest::newRow(qPrintable(text)) << text << start;
        };
        rows(u"2024-05-15T00:00:00Z"_s, u"today|Files from TODAY or yesterday|todays"_s);
        rows(u"2024-05-11T10:20:30.250Z"_s, u"couple days|a couple of days ago|few days"_s);
        rows(u"2024-05-08T10:20:30.250Z"_s,
             u"Last week|this week|past week|The deck from last week or two|last weekend's notes|"
             "last week, a few weeks ago"_s);
        rows(u"2024-05-01T10:20:30.250Z"_s,
             u"couple weeks|Couple of weeks ago|week or two|"
             "recently|most recent|not long ago|the other day"_s);
        rows(u"2024-04-24T10:20:30.250Z"_s, u"few weeks|a few weeks back|weeks back|3 weeks ago"_s);
        rows(u"2024-04-15T10:20:30.250Z"_s,
             u"last month|this month|past month|last month or two"_s);
        rows(u"2024-03-15T10:20:30.250Z"_s,
             u"couple months|couple of months ago|month or two|"
             "A while ago|while back|some time ago|sometime ago|recently, a while ago"_s);
        rows(u"2024-02-15T10:20:30.250Z"_s,
             u"few months|a few months ago|months back|9 months ago"_s);
        rows(u"2023-05-15T10:20:30.250Z"_s, u"last year|this year"_s);
        rows({}, u"|A month ago|past year|2 days ago|last  week|to day|last Tuesday|week"_s);
    }
    void knowsPhrases()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, start);
        const Instant now = at(u"2024-05-15T10:20:30.250Z"_s);
        const auto range = DateIntentParser::parse(text, now);
        QCOMPARE(range.has_value(), !start.isEmpty());
        if (range) {
            QCOMPARE(utc(range->start), utc(start));
            QVERIFY(range->end == now);
        }
    }

    void countsOnTheLocalCalendar_data()
    {
        QTest::addColumn<QStringList>("cells");
        // Name, zone, text, now, start, and the end where it is not now.
        const QString table = uR"(
month clamped, UTC, last month, 2023-03-31T08:00Z, 2023-02-28T08:00Z
month clamped to a leap day, UTC, last month, 2024-03-31T08:00Z, 2024-02-29T08:00Z
months over a year's end, UTC, few months, 2024-01-31T08:00Z, 2023-10-31T08:00Z
year before a leap day, UTC, last year, 2024-02-29T08:00Z, 2023-02-28T08:00Z
days over a leap day, UTC, few days, 2024-03-02T08:00Z, 2024-02-27T08:00Z
end of the day, UTC, today, 2024-05-15T23:59:59.500Z, 2024-05-15T00:00Z
far east, Pacific/Kiritimati, today, 2024-05-15T10:30Z, 2024-05-15T10:00Z
far west, Pacific/Honolulu, today, 2024-05-15T09:30Z, 2024-05-14T10:00Z
odd minutes, Asia/Kathmandu, yesterday, 2024-05-15T18:20Z, 2024-05-14T18:15Z, 2024-05-15T18:15Z
local month, Pacific/Auckland, last month, 2024-03-30T23:00Z, 2024-02-28T23:00Z
midnight, Europe/Berlin, yesterday, 2024-01-09T23:00Z, 2024-01-08T23:00Z, 2024-01-09T23:00Z
23 hours, America/New_York, yesterday, 2024-03-11T15:00Z, 2024-03-10T05:00Z, 2024-03-11T04:00Z
25 hours, America/New_York, yesterday, 2024-11-04T15:00Z, 2024-11-03T04:00Z, 2024-11-04T05:00Z
over a change, Europe/Berlin, last week, 2024-04-01T10:00:00.125Z, 2024-03-25T11:00:00.125Z
into a skipped hour, Europe/Berlin, last week, 2024-04-07T00:30Z, 2024-03-31T01:30Z
from an hour told twice, Europe/Berlin, last week, 2024-10-27T01:30Z, 2024-10-20T00:30Z
half-hour change, Australia/Lord_Howe, last week, 2024-04-09T00:00Z, 2024-04-01T23:30Z
no midnight, Asia/Beirut, today, 2024-03-31T09:00Z, 2024-03-30T22:00Z
two midnights, America/Havana, today, 2024-11-03T15:00Z, 2024-11-03T04:00Z
)"_s;
        for (const QString &line : table.split(u'\n', Qt::SkipEmptyParts)) {
            const QStringList cells = line.split(u", "_s);
            QTest::newRow(qPrintable(cells[0])) << cells;
        }
    }
    void countsOnTheLocalCalendar()
    {
        QFETCH(const QStringList, cells);
        setZone(cells[1]);
        const auto range = DateIntentParser::parse(cells[2], at(cells[3]));
        QVERIFY(range);
        QCOMPARE(utc(range->start), utc(cells[4]));
        QCOMPARE(utc(range->end), utc(cells.value(5, cells[3])));
    }

    void extractsKeywords_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("keywords");
        QTest::newRow("request") << u"Find my tax return from last week!"_s << u"tax return"_s;
        QTest::newRow("single characters") << u"A B c2 é e\u0301 ?!"_s << u"c2"_s;
        QTest::newRow("repeats") << u"budget BUDGET"_s << u"budget budget"_s;
        QTest::newRow("order") << u"zebra-apple, the Größe_2024"_s << u"zebra apple größe 2024"_s;
        const QString near = u"finds shows years hours weekly backup used files file"_s;
        QTest::newRow("near to fillers") << near << near;
        QTest::newRow("fillers")
            << u"Find show me my the a an where is are with about from in on at to for of that "
               "this was were been have has had do does did will would could should can get open "
               "all any some look search give tell what which how it its i named called like "
               "something somewhat kind sort think maybe probably might pretty sure remember "
               "recall there those these thing stuff related regarding concerning just also or "
               "and but not so very really quite today yesterday last week month recently recent "
               "year past this ago back couple few while sometime time long other day days weeks "
               "MONTHS"_s
            << u""_s;
    }
    void extractsKeywords()
    {
        QFETCH(const QString, text);
        QTEST(DateIntentParser::extractKeywords(text).join(u' '), "keywords");
    }

    void extractsFileTypes_data()
    {
        QTest::addColumn<std::optional<FileType>>("type");
        const auto rows = [](std::optional<FileType> type, const QString &texts) {
            for (const QString &text : texts.split(u'|'))
                QTest::newRow(qPrintable(text)) << type;
        };
        rows(FileType::pdf, u"My PDFs|slides about pdf export|pdf screenshot"_s);
        rows(FileType::screenshot, u"screenshot image|screen shot|Screen Capture"_s);
        rows(FileType::image, u"images|photograph|a picture in a presentation"_s);
        rows(FileType::spreadsheet, u"spreadsheet|Excel|my csv|numbers file|csv slides"_s);
        rows(FileType::presentation, u"presentation|slide|keynote|powerpoint|pptx|decode deck"_s);
        rows(FileType::code, u"code|the transcript|source file|script in markdown"_s);
        rows(FileType::markdown, u"markdown|markdown text file"_s);
        rows(FileType::text, u"text file|txt file|a.txt|text file or docx"_s);
        rows(FileType::document, u"docx document|word document|word file|my docs"_s);
        rows(std::nullopt, u"|the legal document|docs and documents|zip|txt|text|word|numbers"_s);
    }
    void extractsFileTypes()
    {
        QFETCH(const std::optional<FileType>, type);
        const QString text = QString::fromLatin1(QTest::currentDataTag());
        QCOMPARE(DateIntentParser::extractFileTypeIntent(text), type);
    }
};

QTEST_GUILESS_MAIN(TstDateIntentParser)
#include "tst_DateIntentParser.moc"
