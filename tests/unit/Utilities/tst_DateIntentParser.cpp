// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/DateIntentParser.h"
#include "support/LocalZone.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;
using namespace dugwise::DateIntentParser;

class TstDateIntentParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { setZone(u"UTC"_s); }

    void countsBackOnTheLocalCalendar()
    {
        const QString usualNow = u"2024-05-15T10:20:30.250Z"_s;
        // Texts, start, now, zone, and the end where it is not now.
        const QString table = uR"(
today|Files from TODAY or yesterday|todays; 2024-05-15T00:00Z
couple days|a couple of days ago|few days; 2024-05-11T10:20:30.250Z
Last week|this week|past week|last week or two|last week, few weeks ago; 2024-05-08T10:20:30.250Z
couple weeks|Couple of weeks ago|week or two; 2024-05-01T10:20:30.250Z
recently|most recent|not long ago|the other day; 2024-05-01T10:20:30.250Z
few weeks|weeks back|3 weeks ago; 2024-04-24T10:20:30.250Z
last month|this month|past month|last month or two; 2024-04-15T10:20:30.250Z
couple months|couple of months ago|month or two; 2024-03-15T10:20:30.250Z
A while ago|while back|some time ago|sometime ago|recently, a while ago; 2024-03-15T10:20:30.250Z
few months|months back|9 months ago; 2024-02-15T10:20:30.250Z
last year|this year; 2023-05-15T10:20:30.250Z
last month; 2024-02-29T08:00Z; 2024-03-31T08:00Z
few months; 2023-10-31T08:00Z; 2024-01-31T08:00Z
last year; 2023-02-28T08:00Z; 2024-02-29T08:00Z
today; 2024-05-15T00:00Z; 2024-05-15T23:59:59.500Z
today; 2024-05-15T10:00Z; 2024-05-15T10:30Z; Pacific/Kiritimati
today; 2024-05-14T10:00Z; 2024-05-15T09:30Z; Pacific/Honolulu
yesterday; 2024-05-14T18:15Z; 2024-05-15T18:20Z; Asia/Kathmandu; 2024-05-15T18:15Z
last month; 2024-02-28T23:00Z; 2024-03-30T23:00Z; Pacific/Auckland
yesterday; 2024-03-10T05:00Z; 2024-03-11T15:00Z; America/New_York; 2024-03-11T04:00Z
yesterday; 2024-11-03T04:00Z; 2024-11-04T15:00Z; America/New_York; 2024-11-04T05:00Z
last week; 2024-03-25T11:00:00.125Z; 2024-04-01T10:00:00.125Z; Europe/Berlin
last week; 2024-03-31T01:30Z; 2024-04-07T00:30Z; Europe/Berlin
last week; 2024-10-20T00:30Z; 2024-10-27T01:30Z; Europe/Berlin
today; 2024-03-30T22:00Z; 2024-03-31T09:00Z; Asia/Beirut
today; 2024-11-03T04:00Z; 2024-11-03T15:00Z; America/Havana
today; 2025-11-02T04:00Z; 2025-11-02T17:00Z; America/Havana
)"_s;
        for (const QString &line : table.split(u'\n', Qt::SkipEmptyParts)) {
            const QStringList cells = line.split(u"; "_s);
            const QString now = cells.value(2, usualNow);
            setZone(cells.value(3, u"UTC"_s));
            for (const QString &text : cells[0].split(u'|')) {
                const auto range = parse(text, at(now)).value_or(DateRange());
                QVERIFY2(qAbs(range.start.seconds - at(cells[1]).seconds) < 1e-4
                             && range.end == at(cells.value(4, now)),
                         qPrintable(text + u" of "_s + line));
            }
        }
        const QString others =
            u"|A month ago|past year|2 days ago|last  week|to day|last Tuesday"_s;
        for (const QString &text : others.split(u'|'))
            QVERIFY2(!parse(text, at(usualNow)), qPrintable(text));
    }

    void extractsKeywords()
    {
        const QString text =
            u"Find my zebra-apple, BUDGET budget! A c2 é e\u0301 the Größe_2024 ?! "
            "finds shows years hours weekly backup used files file"_s;
        QCOMPARE(extractKeywords(text).join(u' '),
                 u"zebra apple budget budget c2 größe 2024 "
                 "finds shows years hours weekly backup used files file"_s);
        const QString fillers = uR"(
Find show me my the a an where is are with about from in on at to for of that this was were been
have has had do does did will would could should can get open all any some look search give tell
what which how it its i named called like something somewhat kind sort think maybe probably might
pretty sure remember recall there those these thing stuff related regarding concerning just also or
and but not so very really quite today yesterday last week month recently recent year past this ago
back couple few while sometime time long other day days weeks MONTHS)"_s;
        QCOMPARE(extractKeywords(fillers), QStringList());
    }

    void extractsFileTypes()
    {
        const QString table = uR"(
pdf: My PDFs|slides about pdf export|pdf screenshot
screenshot: screenshot image|screen shot|Screen Capture
image: images|photograph|a picture in a presentation|image csv
spreadsheet: spreadsheet|Excel|my csv|numbers file|csv slides
presentation: presentation|slide|keynote|powerpoint|pptx|decode deck
code: code|the transcript|source file|script in markdown
markdown: markdown|markdown text file
text: text file|txt file|a.txt|text file or docx
document: docx document|word document|word file|my docs
none: |the legal document|docs and documents|zip|txt|text|word|numbers
)"_s;
        for (const QString &line : table.split(u'\n', Qt::SkipEmptyParts)) {
            const auto type = fileTypeFromRawValue(line.section(u": "_s, 0, 0));
            for (const QString &text : line.section(u": "_s, 1).split(u'|'))
                QVERIFY2(extractFileTypeIntent(text) == type, qPrintable(text));
        }
    }
};

QTEST_GUILESS_MAIN(TstDateIntentParser)
#include "tst_DateIntentParser.moc"
