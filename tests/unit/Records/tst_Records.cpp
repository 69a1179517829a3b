// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/Records/CrossAppResult.h"
#include "Models/Records/DateRange.h"
#include "Models/Records/FileType.h"
#include "Models/Records/SearchResult.h"
#include "Models/Records/SidebarItem.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;

namespace {

using MatchReason = SearchResult::MatchReason;

const QUuid kId(u"{11111111-2222-4333-8444-555555555555}"_s);

/// A record of defaults but for one field.
template <typename Record, typename Field, typename Value>
Record with(Field Record::*field, Value value)
{
    Record record{};
    record.*field = value;
    return record;
}

/// Every record differs from every other one, and hashes differently.
template <typename Record>
void compareAll(const QList<Record> &records)
{
    for (qsizetype i = 0; i < records.size(); ++i) {
        for (qsizetype j = 0; j < records.size(); ++j) {
            const bool isEqual = records[i] == records[j];
            const bool isRight =
                isEqual == (i == j) && (qHash(records[i]) == qHash(records[j])) == isEqual;
            QVERIFY2(isRight, qPrintable(u"%1 and %2"_s.arg(i).arg(j)));
        }
    }
}

} // namespace

class TstRecords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void enumsAreWrittenAndRead()
    {
        const auto told = [](const auto &values, auto... texts) {
            QStringList found;
            for (const auto value : values)
                found.append(QStringList({texts(value)...}).join(u' '));
            return found.join(u'|');
        };
        const auto raw = [](auto value) { return rawValue(value); };
        const auto icon = [](auto value) { return iconName(value); };
        QCOMPARE(told(kAllFileTypes, raw, displayName),
                 u"pdf PDF|text Text|markdown Markdown|document Document|image Image|"
                 "screenshot Screenshot|spreadsheet Spreadsheet|presentation Presentation|"
                 "code Code|archive Archive|other File"_s);
        QCOMPARE(told(kAllMatchReasons, raw, icon),
                 u"Filename match doc.text.magnifyingglass|Content match text.magnifyingglass|"
                 "Folder match folder|Recently modified clock|File type match doc|"
                 "Semantic match brain|Download info arrow.down.circle|"
                 "Recently used clock.arrow.circlepath|Calendar context calendar"_s);
        QCOMPARE(told(kAllCrossAppSources, raw, icon, tint),
                 u"Email envelope.fill blue|Message message.fill green|Calendar calendar orange"_s);
        QCOMPARE(told(kAllSidebarItems, raw), u"Home|Settings|Privacy|About"_s);

        for (const FileType type : kAllFileTypes)
            QCOMPARE(fileTypeFromRawValue(rawValue(type)), std::optional(type));
        for (const MatchReason reason : kAllMatchReasons)
            QCOMPARE(matchReasonFromRawValue(rawValue(reason)), std::optional(reason));
        for (const CrossAppSource source : kAllCrossAppSources)
            QCOMPARE(crossAppSourceFromRawValue(rawValue(source)), std::optional(source));
        const QString others = u"|Screenshot|PDF|pdf |pd|semantic|semantic match|email"_s;
        for (const QString &text : others.split(u'|'))
            QVERIFY2(!fileTypeFromRawValue(text) && !matchReasonFromRawValue(text)
                         && !crossAppSourceFromRawValue(text),
                     qPrintable(text));
    }

    void filesDifferByEveryField()
    {
        using F = IndexedFileFields;
        QList<F> variants{F(), with(&F::id, kId), with(&F::size, 1)};
        for (const auto field : {&F::name, &F::path, &F::fileExtension, &F::folderPath})
            variants.append(with(field, u"a"_s));
        for (const auto field : {&F::createdDate, &F::modifiedDate})
            variants.append(with(field, Instant{1}));
        for (const QByteArray &text : {""_ba, "a"_ba, "A"_ba})
            variants.append(with(&F::extractedText, TextContent(text, text.toLower())));
        for (const auto field : {&F::lastUsedDate, &F::downloadDate})
            variants.append({with(field, Instant{}), with(field, Instant{1})});
        for (const QString &text : {u""_s, u"a"_s})
            variants.append(with(&F::downloadSource, text));
        compareAll(variants);
    }

    void resultsDifferByEveryField()
    {
        using R = SearchResult;
        const IndexedFile file(with(&IndexedFileFields::size, 1));
        QList<R> results{R(), with(&R::id, kId), with(&R::file, file)};
        results.append({with(&R::relevanceScore, 0.5), with(&R::summary, u"a"_s)});
        const auto [first, second] = std::pair(MatchReason::filename, MatchReason::content);
        for (const QList<MatchReason> &reasons : {QList{first}, {first, second}, {second, first}})
            results.append(with(&R::matchReasons, reasons));
        compareAll(results);
        using C = CrossAppResult;
        QList<C> hits{C(), with(&C::id, kId), with(&C::source, CrossAppSource::message)};
        for (const auto field : {&C::title, &C::subtitle, &C::snippet})
            hits.append(with(field, u"a"_s));
        hits.append({with(&C::date, Instant{1}), with(&C::relevanceScore, 1)});
        hits.append({with(&C::actionPath, u""_s), with(&C::actionPath, u"a"_s)});
        compareAll(hits);
    }

    void sharesFilesAndTellsTime()
    {
        const IndexedFile file(with(&IndexedFileFields::size, 1));
        const IndexedFile copy = file;
        QCOMPARE(&*copy, &*file);
        QCOMPARE(IndexedFile(*file), file);
        QCOMPARE(&*IndexedFile(), &*IndexedFile());

        QCOMPARE(Instant::fromUnix(978307200.5).seconds, 0.5);
        QCOMPARE(Instant{0.5}.unixSeconds(), 978307200.5);
        QCOMPARE(qHash(Instant{-0.0}), qHash(Instant{0.0}));
        // As near as a double comes, which one counted from 1970 does not.
        const double fraction = Instant::fromUnix(1700000000, 123456789).seconds - 721692800;
        QVERIFY(qAbs(fraction - 0.123456789) < 6e-8);

        constexpr DateIntentParser::DateRange kRange{{1}, {2}};
        QVERIFY(kRange.contains({1}) && kRange.contains({2}));
        QVERIFY(!kRange.contains({0.999}) && !kRange.contains({2.001}));
    }
};

QTEST_GUILESS_MAIN(TstRecords)
#include "tst_Records.moc"
