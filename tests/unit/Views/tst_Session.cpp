// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Session.h"
#include "support/Fakes.h"
#include "support/SampleFiles.h"
#include "support/SampleHome.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace dugwise::test {

namespace {

QStringList folderNames(Session &session)
{
    QStringList names;
    for (int row = 0; row < session.folders()->rowCount(); ++row)
        names.append(session.folders()->index(row).data(FolderModel::nameRole).toString());
    return names;
}

} // namespace

class TstSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsAskedReachesTheApplication()
    {
        SampleHome home;
        writeFile(home.path(u"Documents/budget.txt"_s), "paint and nails");
        writeFile(home.path(u"Downloads/lease.txt"_s), "landlord and tenant");
        auto ownedWorkspace = std::make_unique<FakeWorkspace>();
        const FakeWorkspace *const workspace = ownedWorkspace.get();
        home.platform.workspace = std::move(ownedWorkspace);
        AppState state(home.platform, AppServices(home.platform));
        FileIndexer indexer(home.platform);
        NetworkMonitor network(nullptr);
        Session session(home.platform, state, indexer, network);
        QTRY_VERIFY(!indexer.isBusy());
        QCOMPARE(folderNames(session), QStringList({u"Documents"_s, u"Downloads"_s}));

        QVERIFY(!session.submit(u" \n"_s));
        QVERIFY(state.messages().isEmpty());
        QVERIFY(session.submit(u"  budget "_s));
        QTRY_VERIFY(!session.isSearching());
        QCOMPARE(state.messages().first().content, u"budget"_s);
        QCOMPARE(session.recentLabels(), QStringList{u"budget"_s});
        const QString path = home.path(u"Documents/budget.txt"_s);
        QCOMPARE(state.lastResults().first().file->path, path);

        session.select(2); // below request and answer
        QCOMPARE(session.preview()->name(), u"budget.txt"_s);
        session.select(0); // no result
        QCOMPARE(session.preview()->name(), u"budget.txt"_s);
        session.openFile(2);
        session.revealFile(2);
        session.openFile(1);
        QCOMPARE(workspace->opened, QStringList{path});
        QCOMPARE(workspace->shown, QStringList{path});
        session.newChat();
        QCOMPARE(session.preview()->name(), QString());
        session.selectNumber(1); // of no answer
        QCOMPARE(session.preview()->name(), QString());

        session.setPage(2);
        QCOMPARE(state.selectedSidebarItem(), SidebarItem::privacy);
        session.setPage(9);
        QCOMPARE(session.page(), 2);
        QSignalSpy pending(&session, &Session::pendingQueryChanged);
        session.searchAgain(0);
        QCOMPARE(session.page(), 0);
        QCOMPARE(session.pendingQuery(), u"budget"_s);
        session.clearPendingQuery();
        QCOMPARE(session.pendingQuery(), QString());
        QCOMPARE(pending.size(), 2);
        session.searchAgain(7); // there is none
        QCOMPARE(session.pendingQuery(), QString());

        session.setPage(2);
        session.ask(u" \n"_s);
        QCOMPARE(session.page(), 2);
        session.ask(u" the\nlease 🎉 "_s);
        session.ask(QString(200'000, u'x'));
        QCOMPARE(session.page(), 0);
        QTRY_VERIFY(!session.isSearching());
        QVERIFY(session.recentLabels().value(0).size() <= 300);
        QCOMPARE(state.recentSearches().value(0).size(), 100'000);
        QCOMPARE(state.recentSearches().value(1), u"the\nlease 🎉"_s);

        session.setColumns("columns");
        QCOMPARE(session.columns(), "columns");
        QCOMPARE(session.windowSize(), QSize(1200, 750));
        session.setWindowSize({1300, 800});
        QCOMPARE(session.windowSize(), QSize(1300, 800));
        QTRY_VERIFY(!indexer.isBusy());
    }

    void foldersComeAndGoOneByOne()
    {
        SampleHome home;
        for (const QString &name : {u"a"_s, u"b\nb"_s, u"c"_s})
            writeFile(home.path(name + u"/file.txt"_s), "text");
        AppState state(home.platform, AppServices(home.platform));
        FileIndexer indexer(home.platform);
        NetworkMonitor network(nullptr);
        Session session(home.platform, state, indexer, network);
        const QAbstractItemModelTester tester(
            session.folders(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        QSignalSpy removals(session.folders(), &QAbstractItemModel::rowsRemoved);
        QSignalSpy resets(session.folders(), &QAbstractItemModel::modelReset);
        for (const QString &name : {u"a"_s, u"b\nb"_s, u"c"_s})
            indexer.addFolderURL(QUrl::fromLocalFile(home.path(name)));
        const QString odd = u"b\uFFFDb"_s;
        QTRY_COMPARE(folderNames(session), QStringList({u"a"_s, odd, u"c"_s}));
        QCOMPARE(session.folders()->index(0).data(FolderModel::pathRole), home.path(u"a"_s));
        session.removeFolder(5); // there is none
        session.removeFolder(1);
        QTRY_COMPARE(folderNames(session), QStringList({u"a"_s, u"c"_s}));
        QCOMPARE(removals.size(), 1);
        QCOMPARE(removals[0].mid(1), QVariantList({1, 1}));
        session.removeFolder(0);
        session.removeFolder(0);
        QTRY_COMPARE(session.folderCount(), 0);
        QCOMPARE(folderNames(session), QStringList());
        QCOMPARE(resets.size(), 0);
        QTRY_VERIFY(!indexer.isBusy());
    }

    void whatIsAskedAtOnceWaitsForTheIndex()
    {
        SampleHome home;
        writeFile(home.path(u"Documents/budget.txt"_s), "paint and nails");
        AppState state(home.platform, AppServices(home.platform));
        FileIndexer indexer(home.platform);
        NetworkMonitor network(nullptr);
        Session session(home.platform, state, indexer, network);
        session.ask(u"budget"_s);
        session.ask(u"nails"_s);
        session.ask(u"nails"_s); // once more, as nothing seems to happen
        QVERIFY(state.messages().isEmpty());
        QCOMPARE(session.waitingRequest(), u"nails"_s);
        session.ask(u"lease"_s);
        session.submit(u"the leash"_s); // what the person made of it
        QCOMPARE(session.waitingRequest(), u"nails"_s);
        QTRY_COMPARE(state.messages().size(), 6);
        QCOMPARE(session.waitingRequest(), QString());
        QCOMPARE(state.recentSearches(), QStringList({u"nails"_s, u"budget"_s, u"the leash"_s}));
        const QList<ChatMessage> messages = state.messages();
        QCOMPARE(
            std::ranges::count(
                messages, 1, [](const ChatMessage &message) { return message.results.size(); }),
            2);
    }

    void anIndexOfEarlierRunsIsEnoughToAnswer()
    {
        SampleHome home;
        writeFile(home.path(u"Documents/budget.txt"_s), "paint and nails");
        {
            FileIndexer indexer(home.platform);
            QTRY_VERIFY(!indexer.isBusy());
        }
        writeFile(home.path(u"Downloads/one more folder"_s), "");
        FileLock lock(home.platform.folders.data + u"/file_index.json.lock"_s);
        QCOMPARE(lock.state(), FileLock::State::held);
        AppState state(home.platform, AppServices(home.platform));
        FileIndexer indexer(home.platform);
        NetworkMonitor network(nullptr);
        Session session(home.platform, state, indexer, network);
        session.ask(u"budget"_s);
        QTRY_VERIFY(!state.messages().isEmpty());
        QVERIFY(indexer.isBusy());
        QTRY_COMPARE(state.messages().size(), 2);
        QCOMPARE(state.messages().last().results.size(), 1);
        lock = FileLock();
        QTRY_VERIFY(!indexer.isBusy());
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstSession)
#include "tst_Session.moc"
