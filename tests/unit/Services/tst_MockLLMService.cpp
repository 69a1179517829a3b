// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/MockLLMService.h"
#include "support/SampleFiles.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;
using Reason = SearchResult::MatchReason;

namespace {

SearchResult result(const QList<Reason> &reasons)
{
    return {QUuid::createUuid(), indexedFile({.path = u"/a.txt"_s}), 1, reasons, QString()};
}

CrossAppResult found(CrossAppSource source)
{
    CrossAppResult hit;
    hit.source = source;
    return hit;
}

const QString kOpen = u". Say \"open #1\" to open a file or \"tell me about #2\" for a summary."_s;

} // namespace

class TstMockLLMService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answers_data()
    {
        QTest::addColumn<QList<SearchResult>>("files");
        QTest::addColumn<QList<CrossAppResult>>("hits");
        QTest::addColumn<QString>("answer");
        const SearchResult bare = result({});
        const SearchResult named = result({Reason::content, Reason::filename});
        const SearchResult recent = result({Reason::recency});
        const CrossAppResult email = found(CrossAppSource::email);
        const CrossAppResult message = found(CrossAppSource::message);
        const CrossAppResult event = found(CrossAppSource::calendar);
        using Files = QList<SearchResult>;
        using Hits = QList<CrossAppResult>;

        QTest::newRow("nothing")
            << Files() << Hits()
            << u"I searched your Mac but couldn't find a match for that. Try describing the file a "
               "different way \u2014 like when you last opened it, what type it was, or what was "
               "in "
               "it."_s;
        QTest::newRow("one file")
            << Files{named} << Hits()
            << u"I found 1 file matching your search, ranked by content match, filename match"_s
                   + kOpen;
        QTest::newRow("a label of two files")
            << Files{recent, recent} << Hits()
            << u"I found 2 files matching your search, ranked by recently modified"_s + kOpen;
        QTest::newRow("labels of several files")
            << Files{recent, named, result({Reason::calendarAnchor, Reason::fileType})} << Hits()
            << u"I found 3 files matching your search, ranked by calendar context, content match, "
               "file type match, filename match, recently modified"_s
                   + kOpen;
        QTest::newRow("no reasons")
            << Files(16, bare) << Hits()
            << u"I found 16 files matching your search, ranked by "_s + kOpen;
        QTest::newRow("two emails")
            << Files() << Hits{email, email} << u"I also found 2 emails related to your search."_s;
        QTest::newRow("all sources, in their own order")
            << Files() << Hits{event, event, message, email}
            << u"I also found 1 email and 1 message and 2 calendars related to your search."_s;
        QTest::newRow("both")
            << Files{recent} << Hits{message, email}
            << u"I found 1 file matching your search, ranked by recently modified"_s + kOpen
                   + u" I also found 1 email and 1 message related to your search."_s;
    }
    void answers()
    {
        QFETCH(QList<SearchResult>, files);
        QFETCH(QList<CrossAppResult>, hits);
        const auto answer = QCoro::waitFor(m_service.generateResponse(u"%1 %2"_s, files, hits));
        QTEST(answer, "answer");
    }

    void understandsNothing()
    {
        QVERIFY(!QCoro::waitFor(m_service.parseQuery(u"budget"_s)));
        QVERIFY(!QCoro::waitFor(m_service.generateInsights(u"text"_s, u"a.txt"_s)));
        QVERIFY(!m_service.isAvailable());
        QCOMPARE(m_service.statusLabel(), u"Keyword Search"_s);
    }

    void keepsEveryOrder()
    {
        for (const auto &files : {QList<SearchResult>(), {result({}), result({Reason::folder})}})
            QCOMPARE(QCoro::waitFor(m_service.rerankResults(u"x"_s, files)), files);
    }

private:
    MockLLMService m_service;
};

QTEST_GUILESS_MAIN(TstMockLLMService)
#include "tst_MockLLMService.moc"
