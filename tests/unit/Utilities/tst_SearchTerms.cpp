// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/SearchTerms.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;

namespace {

constexpr Instant kNow{750'000'000};
constexpr DateIntentParser::DateRange kLastWeek{{kNow.seconds - 7 * 86400}, kNow};

} // namespace

class TstSearchTerms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textAlone()
    {
        const auto terms = effectiveTerms(u"Screenshot called Tax Form from last week"_s, {}, kNow);
        QCOMPARE(terms.keywords.join(u' '), u"screenshot tax form irs w2 1099 taxes"_s);
        QCOMPARE(terms.phrases, QStringList(u"tax form from last week"_s));
        QCOMPARE(terms.dateRange, std::optional(kLastWeek));
        QCOMPARE(terms.fileType, std::optional(FileType::screenshot));
        QVERIFY(terms.includeScreenshots);
        QVERIFY(effectiveTerms(u"show me the thing"_s, {}, kNow).isEmpty());
        // Two words name the kind of file, but are not the word that asks for screenshots.
        QVERIFY(!effectiveTerms(u"screen shot"_s, {}, kNow).includeScreenshots);
    }

    void intentInsteadOfText()
    {
        ParsedSearchIntent intent{.personNames = {u"Ada"_s}, .wantsCrossApp = true};
        const QString query = u"pdf screenshot called other name"_s;
        QVERIFY(effectiveTerms(query, intent, kNow).isEmpty());
        QCOMPARE(effectiveTerms(query + u" from last week"_s, intent, kNow).dateRange,
                 std::optional(kLastWeek));

        intent = {.keywords = {u"Budget"_s, u"tax"_s},
                  .phrases = {u"Q3 Plan"_s},
                  .fileType = FileType::code,
                  .includeScreenshots = true,
                  .dateRange = DateIntentParser::DateRange{{1}, {2}}};
        const SearchTerms terms = effectiveTerms(u"from last week"_s, intent, kNow);
        QCOMPARE(terms.keywords.join(u' '), u"Budget tax irs w2 1099 taxes"_s);
        QCOMPARE(terms.phrases, intent.phrases);
        QCOMPARE(terms.fileType, intent.fileType);
        QVERIFY(terms.includeScreenshots);
        QCOMPARE(terms.dateRange, intent.dateRange);
    }

    void anyTermSuffices()
    {
        QVERIFY(SearchTerms().isEmpty());
        QVERIFY(!SearchTerms{.keywords = {u"a"_s}}.isEmpty());
        QVERIFY(!SearchTerms{.phrases = {u"a"_s}}.isEmpty());
        QVERIFY(!SearchTerms{.dateRange = kLastWeek}.isEmpty());
        QVERIFY(!SearchTerms{.fileType = FileType::pdf}.isEmpty());
        QVERIFY(!SearchTerms{.includeScreenshots = true}.isEmpty());
    }

    void expands_data()
    {
        QTest::addColumn<QString>("expanded");
        QTest::newRow("deck budget") << u"deck budget presentation pptx ppt keynote slide pitch "
                                        "forecast financial expense spending"_s;
        QTest::newRow("tax taxes") << u"tax taxes irs w2 1099"_s;
        QTest::newRow("tax tax") << u"tax tax irs w2 1099 taxes"_s;
        QTest::newRow("slides slide") << u"slides slide presentation pptx ppt keynote"_s;
        QTest::newRow("pic") << u"pic image photo picture jpg png"_s;
        QTest::newRow("Deck decks") << u"Deck decks"_s;
    }
    void expands()
    {
        const QStringList keywords = QString::fromLatin1(QTest::currentDataTag()).split(u' ');
        QTEST(expandKeywords(keywords).join(u' '), "expanded");
    }

    void extractsPhrases_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("phrases");
        const auto row = [](const char *name, const QString &query, const QString &phrases) {
            QTest::newRow(name) << query << phrases;
        };
        row("no marker", u"the quarterly plan"_s, {});
        row("cut at a comma", u"notes Called Q3 Plan, final"_s, u"q3 plan"_s);
        row("other cuts", u"called abc! says def? about ghi; named jkl."_s, u"abc|jkl|ghi|def"_s);
        row("markers' order", u"with title budget plan"_s, u"budget plan|title budget plan"_s);
        row("first of two", u"called one. called two"_s, u"one"_s);
        row("two characters", u"about it. with ie\u0301"_s, {});
        row("six words", u"about a b  c d e f"_s, u"a b  c d e f"_s);
        row("seven words", u"about a b c d e f g"_s, {});
        row("blanks around", u"about  \t plans \u00A0. x"_s, u"plans"_s);
        row("marker at the end", u"a file called "_s, {});
    }
    void extractsPhrases()
    {
        QFETCH(const QString, query);
        QTEST(extractPhrases(query).join(u'|'), "phrases");
    }

    void stems_data()
    {
        QTest::addColumn<QString>("variants");
        // The rarer ones stand on either side of the shortest word that loses its ending.
        const QString table =
            u"reports report|boxes boxe box|meeting meet meetings|agreement agree agreements|"
            "tax taxs|bus|BUDGETS BUDGETSs|dies die|sting stings|acting act actings|aged ageds|"
            "ended end endeds|cement cements|fitment fit fitments|e\u0301as|"
            "e\u0301lament e\u0301la e\u0301laments"_s;
        for (const QString &variants : table.split(u'|'))
            QTest::newRow(qPrintable(variants)) << variants;
    }
    void stems()
    {
        QFETCH(const QString, variants);
        QCOMPARE(stemVariants(variants.section(u' ', 0, 0)).join(u' '), variants);
    }
};

QTEST_GUILESS_MAIN(TstSearchTerms)
#include "tst_SearchTerms.moc"
