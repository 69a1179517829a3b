// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/SearchTerms.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;

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

    void expands()
    {
        const auto expanded = [](const QString &keywords) {
            return expandKeywords(keywords.split(u' ')).join(u' ');
        };
        QCOMPARE(expanded(u"deck budget"_s),
                 u"deck budget presentation pptx ppt keynote slide pitch "
                 "forecast financial expense spending"_s);
        QCOMPARE(expanded(u"tax taxes"_s), u"tax taxes irs w2 1099"_s);
        QCOMPARE(expanded(u"tax tax"_s), u"tax tax irs w2 1099 taxes"_s);
        QCOMPARE(expanded(u"Deck decks"_s), u"Deck decks"_s);
    }

    void extractsPhrases()
    {
        // Queries, each with the phrases in it.
        const QString table =
            u"the quarterly plan=\nnotes Called Q3 Plan, final=q3 plan\na file called =\n"
            "other called abc! says def? about ghi; named jkl.=abc|jkl|ghi|def\n"
            "with title budget plan=budget plan|title budget plan\ncalled one. called two=one\n"
            "about it. with ie\u0301=\nabout a b  c d e f=a b  c d e f\nabout a b c d e f g=\n"
            "about  \t plans \u00A0. x=plans"_s;
        for (const QString &line : table.split(u'\n')) {
            const QString query = line.section(u'=', 0, 0);
            QCOMPARE(query + u'=' + extractPhrases(query).join(u'|'), line);
        }
    }

    void stems()
    {
        // The rarer ones stand on either side of the shortest word that loses its ending.
        const QString table =
            u"reports report|boxes boxe box|meeting meet meetings|agreement agree agreements|"
            "tax taxs|bus|BUDGETS BUDGETSs|dies die|sting stings|acting act actings|aged ageds|"
            "ended end endeds|cement cements|fitment fit fitments|e\u0301as|"
            "e\u0301lament e\u0301la e\u0301laments"_s;
        for (const QString &variants : table.split(u'|'))
            QCOMPARE(stemVariants(variants.section(u' ', 0, 0)).join(u' '), variants);
    }

private:
    static constexpr Instant kNow{750'000'000};
    static constexpr DateIntentParser::DateRange kLastWeek{{kNow.seconds - 7 * 86400}, kNow};
};

QTEST_GUILESS_MAIN(TstSearchTerms)
#include "tst_SearchTerms.moc"
