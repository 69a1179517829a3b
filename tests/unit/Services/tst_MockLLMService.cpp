// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/MockLLMService.h"
#include "support/SampleFiles.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;
using Reasons = QList<SearchResult::MatchReason>;
using Sources = QList<CrossAppSource>;

namespace {

QList<SearchResult> results(const QList<Reasons> &reasons)
{
    QList<SearchResult> list;
    for (const Reasons &ofOne : reasons)
        list.append({QUuid::createUuid(), indexedFile({.path = u"/a.txt"_s}), 1, ofOne, {}});
    return list;
}

} // namespace

class TstMockLLMService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answers_data()
    {
        QTest::addColumn<QList<Reasons>>("reasons");
        QTest::addColumn<Sources>("sources");
        QTest::addColumn<QString>("answer");
        const auto row = [](const char *name,
                            const QList<Reasons> &reasons,
                            const Sources &sources,
                            const QString &answer) {
            const QString more =
                u". Say \"open #1\" to open a file or \"tell me about #2\" for a summary."_s;
            QTest::newRow(name) << reasons << sources << QString(answer).replace(u'|', more);
        };
        using enum SearchResult::MatchReason;
        using enum CrossAppSource;
        const Reasons named{content, filename};
        const Reasons recent{recency};
        const QString begin = u"I found "_s;
        const QString middle = u" matching your search, ranked by "_s;
        row("nothing",
            {},
            {},
            u"I searched your Mac but couldn't find a match for that. Try describing the file a "
            "different way \u2014 like when you last opened it, what type it was, or what was in "
            "it."_s);
        row("one", {named}, {}, begin + u"1 file"_s + middle + u"content match, filename match|"_s);
        row("same reason",
            {recent, recent},
            {},
            begin + u"2 files"_s + middle + u"recently modified|"_s);
        row("more reasons",
            {recent, named, {calendarAnchor, fileType}},
            {},
            begin + u"3 files"_s + middle
                + u"calendar context, content match, file type match, filename match, recently "
                  "modified|"_s);
        row("no reasons", QList<Reasons>(16), {}, begin + u"16 files"_s + middle + u'|');
        row("emails", {}, {email, email}, u"I also found 2 emails related to your search."_s);
        row("all sources, in their own order",
            {},
            {calendar, calendar, message, email},
            u"I also found 1 email and 1 message and 2 calendars related to your search."_s);
        row("both",
            {recent},
            {message, email},
            begin + u"1 file"_s + middle
                + u"recently modified| I also found 1 email and 1 message related to your search."_s);
    }
    void answers()
    {
        QFETCH(QList<Reasons>, reasons);
        QFETCH(Sources, sources);
        QList<CrossAppResult> hits(sources.size());
        for (qsizetype i = 0; i < sources.size(); ++i)
            hits[i].source = sources[i];
        const auto answer = m_service.generateResponse(u"%1 %2"_s, results(reasons), hits);
        QTEST(QCoro::waitFor(answer), "answer");
    }

    void understandsNothingAndKeepsEveryOrder()
    {
        QVERIFY(!QCoro::waitFor(m_service.parseQuery(u"budget"_s)));
        QVERIFY(!QCoro::waitFor(m_service.generateInsights(u"text"_s, u"a.txt"_s)));
        QVERIFY(!m_service.isAvailable());
        QCOMPARE(m_service.statusLabel(), u"Keyword Search"_s);
        for (const auto &list : {results({}), results({{}, {}, {}})})
            QCOMPARE(QCoro::waitFor(m_service.rerankResults(u"x"_s, list)), list);
    }

private:
    MockLLMService m_service;
};

QTEST_GUILESS_MAIN(TstMockLLMService)
#include "tst_MockLLMService.moc"
