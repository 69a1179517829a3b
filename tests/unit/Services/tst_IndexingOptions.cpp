// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/FileIndexer.h"
#include "Services/StoredSwitch.h"
#include "support/SampleFiles.h"
#include "support/SampleHome.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

const std::array kSwitches{kEnableLocalIndexing,
                           kIncludeHiddenFiles,
                           kIncludeScreenshots,
                           kIncludePDFs,
                           kCloudSyncEnabled};

bool settle(const FileIndexer &indexer)
{
    return QTest::qWaitFor([&] { return !indexer.isBusy(); }, 20'000);
}

QString names(const FileIndexer &indexer)
{
    QStringList list;
    for (const IndexedFile &file : indexer.indexedFiles())
        list.append(file->name);
    return list.join(u'|');
}

} // namespace

class TstIndexingOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_home = std::make_unique<SampleHome>();
        qputenv("HOME", m_home->folder.path().toLocal8Bit()); // no bookmark is looked for above
        for (const char *name : {".hidden.txt",
                                 ".git/config",
                                 ".app/inside.txt",
                                 "A.app/inside.txt",
                                 "Report.PDF",
                                 "Screenshots/beach.jpg",
                                 "Screenshots/notes.txt",
                                 "a.txt",
                                 "pdf",
                                 "screen.png",
                                 "screenshot of a.pdf"})
            writeFile(m_home->path(u"Documents/"_s + QLatin1StringView(name)), "x");
    }

    void switchesAreKept()
    {
        UserDefaults &defaults = m_home->platform.userDefaults;
        QStringList keys;
        for (const StoredSwitch &one : kSwitches) {
            keys.append(one.key);
            QCOMPARE(one.isOn(defaults), one.byDefault);
            one.set(defaults, !one.byDefault);
            QCOMPARE(one.isOn(defaults), !one.byDefault);
            QCOMPARE(defaults.boolean(one.key), !one.byDefault);
            defaults.setStringList(one.key, {u"perhaps"_s});
            QCOMPARE(one.isOn(defaults), one.byDefault);
        }
        QCOMPARE(keys.join(u' '),
                 u"enableLocalIndexing includeHiddenFiles includeScreenshots includePDFs "
                 "cloudSyncEnabled"_s);
    }

    void walkHonoursTheSwitches_data()
    {
        QTest::addColumn<QList<StoredSwitch>>("changed");
        QTest::addColumn<QString>("expected");
        const QString usual =
            u"Report.PDF|beach.jpg|notes.txt|a.txt|pdf|screen.png|screenshot of a.pdf"_s;
        using Switches = QList<StoredSwitch>;
        QTest::newRow("as they are by default") << Switches() << usual;
        QTest::newRow("cloud sync") << Switches{kCloudSyncEnabled} << usual;
        QTest::newRow("hidden files")
            << Switches{kIncludeHiddenFiles} << u"inside.txt|config|.hidden.txt|"_s + usual;
        QTest::newRow("no screenshots")
            << Switches{kIncludeScreenshots} << u"Report.PDF|notes.txt|a.txt|pdf"_s;
        QTest::newRow("no PDFs") << Switches{kIncludePDFs}
                                 << u"beach.jpg|notes.txt|a.txt|pdf|screen.png"_s;
        QTest::newRow("neither") << Switches{kIncludePDFs, kIncludeScreenshots}
                                 << u"notes.txt|a.txt|pdf"_s;
        QTest::newRow("no indexing")
            << Switches{kEnableLocalIndexing, kIncludeHiddenFiles} << u""_s;
    }
    void walkHonoursTheSwitches()
    {
        QFETCH(QList<StoredSwitch>, changed);
        QFETCH(QString, expected);
        change(changed);
        FileIndexer indexer(m_home->platform);
        QSignalSpy walking(&indexer, &FileIndexer::isIndexingChanged);
        QVERIFY(settle(indexer));
        QCOMPARE(names(indexer), expected);
        QCOMPARE(indexer.totalFilesIndexed(), indexer.indexedFiles().size());
        // The folder is listed all the same.
        QCOMPARE(indexer.indexedFolderURLs().size(), 1);
        QCOMPARE(walking.isEmpty(), expected.isEmpty());
    }

    void aChangeTakesEffectWithTheNextWalk()
    {
        FileIndexer indexer(m_home->platform);
        QVERIFY(settle(indexer));
        const QString before = names(indexer);
        change({kIncludePDFs, kIncludeScreenshots});
        QVERIFY(settle(indexer));
        QCOMPARE(names(indexer), before);
        indexer.reindexAll();
        QVERIFY(settle(indexer));
        QCOMPARE(names(indexer), u"notes.txt|a.txt|pdf"_s);

        change({kEnableLocalIndexing});
        QSignalSpy walking(&indexer, &FileIndexer::isIndexingChanged);
        indexer.reindexAll(); // nothing is forgotten without a walk that brings it back
        indexer.indexFolder(QUrl::fromLocalFile(m_home->path(u"Documents"_s)));
        writeFile(m_home->path(u"Other/b.txt"_s), "B");
        indexer.addFolderURL(QUrl::fromLocalFile(m_home->path(u"Other"_s)));
        QVERIFY(settle(indexer));
        QCOMPARE(names(indexer), u"notes.txt|a.txt|pdf"_s);
        QCOMPARE(indexer.indexedFolderURLs().size(), 2);
        indexer.clearIndexedData();
        QVERIFY(settle(indexer));
        QCOMPARE(names(indexer), QString());
        QVERIFY(walking.isEmpty());
        change({kEnableLocalIndexing, kIncludePDFs, kIncludeScreenshots});
        indexer.reindexAll();
        QVERIFY(settle(indexer));
        QCOMPARE(names(indexer), before + u"|b.txt"_s);
    }

private:
    void change(const QList<StoredSwitch> &switches)
    {
        for (const StoredSwitch &one : switches)
            one.set(m_home->platform.userDefaults, !one.isOn(m_home->platform.userDefaults));
    }

    std::unique_ptr<SampleHome> m_home;
};

QTEST_GUILESS_MAIN(TstIndexingOptions)
#include "tst_IndexingOptions.moc"
