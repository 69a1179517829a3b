// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/DesktopMetadata.h"
#include "Platform/FileAttributes.h"
#include "Platform/FileLock.h"
#include "Platform/FolderBookmark.h"
#include "Services/FileIndexer.h"
#include "Services/IndexFile.h"
#include "support/Fakes.h"
#include "support/SampleFiles.h"
#include "support/SampleHome.h"
#include "support/SampleStores.h"

#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

class TstFileIndexer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_home = std::make_unique<SampleHome>();
        qputenv("HOME", m_home->folder.path().toLocal8Bit()); // no bookmark is looked for above
        m_platform = newPlatform();
    }
    void cleanup()
    {
        m_indexer.reset();
        m_platform.reset(); // writes to the home until then
    }

    void findsNothingInAnEmptyHome()
    {
        m_platform->folders.desktop.clear(); // switched off
        FileIndexer indexer(*m_platform);
        QSignalSpy walking(&indexer, &FileIndexer::isIndexingChanged);
        QVERIFY(settle(indexer));
        QVERIFY(indexer.indexedFolderURLs().isEmpty() && indexer.indexedFiles().isEmpty());
        QCOMPARE(walking.count(), 0);
        QVERIFY(!QFile::exists(indexPath()));
        QCOMPARE(m_home->log, QStringList());
    }

    void walksTheCommonFolders()
    {
        writeFile(path(u"Desktop/c.txt"_s), "C");
        writeFile(path(u"Documents/b/REPORT.TXT"_s), QByteArray(12'000, 'r'));
        writeFile(path(u"Documents/latin.md"_s), "caf\xe9");
        writeFile(path(u"Documents/.hidden.txt"_s), "h");
        writeFile(path(u"Downloads/x.bin"_s), "X");
        auto reader = std::make_unique<FakeMetadataReader>();
        reader->index->items.insert(
            path(u"Downloads/x.bin"_s),
            {Instant{1}, {Instant{2}, Instant{3}}, {u"one"_s, u"two"_s}, {}});
        m_platform->metadataReader = std::move(reader);
        QVERIFY(launch());
        const QStringList paths{path(u"Documents"_s), path(u"Downloads"_s), path(u"Desktop"_s)};
        QCOMPARE(folders(), paths);
        QCOMPARE(savedPaths(), paths);
        QVERIFY(savedBookmarks().isEmpty());
        QCOMPARE(names(), u"REPORT.TXT latin.md x.bin c.txt"_s);
        QCOMPARE(m_indexer->totalFilesIndexed(), 4);
        QVERIFY(isSaved());

        const IndexedFile report = files().first();
        QVERIFY(!report->id.isNull());
        QCOMPARE(report->path, path(u"Documents/b/REPORT.TXT"_s));
        QCOMPARE(report->folderPath, path(u"Documents/b"_s));
        QCOMPARE(report->fileExtension, u"TXT"_s);
        QCOMPARE(report->size, 12'000);
        QCOMPARE(report->modifiedDate.seconds, fileAttributes(report->path)->modifiedDate.seconds);
        QCOMPARE(report->extractedText->text(), QByteArray(5000, 'r'));
        QVERIFY(!report->lastUsedDate && !report->downloadDate && !report->downloadSource);
        QVERIFY(!files()[1]->extractedText && !files()[2]->extractedText);
        QCOMPARE(files()[2]->lastUsedDate, Instant{1});
        QCOMPARE(files()[2]->downloadDate, Instant{2});
        QCOMPARE(files()[2]->downloadSource, u"one"_s);
    }

    void asksTheDesktopAtEachWalk()
    {
        const QString file = path(u"Downloads/a.bin"_s);
        writeFile(file, "12345");
        m_platform->metadataReader = desktopMetadataReader(m_platform->folders, m_platform->clock);
        SampleFirefox firefox(path(u".mozilla/firefox/x"_s));
        firefox.add({.path = file, .address = u"http://old.example/"_s, .end = {1}, .size = 5});
        QVERIFY(launch());
        QCOMPARE(files().value(0)->downloadSource, u"http://old.example/"_s);
        QCOMPARE(files().first()->downloadDate, Instant{1});
        QVERIFY(!files().first()->lastUsedDate);

        firefox.add({.path = file, .address = u"http://new.example/"_s, .end = {2}, .size = 5});
        writeFile(path(u".local/share/recently-used.xbel"_s),
                  xbel(bookmark(file, "visited=\"2026-01-02T03:04:05Z\"")));
        m_indexer->reindexAll();
        QVERIFY(settle(*m_indexer));
        QCOMPARE(files().value(0)->downloadSource, u"http://new.example/"_s);
        QCOMPARE(files().first()->downloadDate, Instant{2});
        QVERIFY(files().first()->lastUsedDate && isSaved());
    }

    void restoresWithoutWalking()
    {
        writeFile(path(u"Documents/a.txt"_s), "old");
        QVERIFY(launch());
        const QList<IndexedFile> before = files();
        writeFile(path(u"Documents/a.txt"_s), "changed");
        writeFile(path(u"Documents/b.txt"_s), "new");
        FileIndexer indexer(*m_platform);
        QSignalSpy walking(&indexer, &FileIndexer::isIndexingChanged);
        QVERIFY(settle(indexer));
        QCOMPARE(indexer.indexedFiles(), before);
        QCOMPARE(indexer.totalFilesIndexed(), 1);
        QCOMPARE(indexer.indexedFolderURLs(), QList<QUrl>{url(u"Documents"_s)});
        QCOMPARE(walking.count(), 0);
    }

    void addsAFolderOnce()
    {
        const QString name = u"50% #1?/Ünï\ncode"_s;
        writeFile(path(name + u"/a.txt"_s), "A");
        QVERIFY(launch() && add({name}));
        QSignalSpy changes(m_indexer.get(), &FileIndexer::indexedFolderURLsChanged);
        QSignalSpy walking(m_indexer.get(), &FileIndexer::isIndexingChanged);
        QVERIFY(add({name, name + u'/', name + u"/../Ünï\ncode"_s}));
        QCOMPARE(changes.count() + walking.count(), 0);
        QCOMPARE(folders(), QStringList{path(name)});
        QCOMPARE(savedPaths(), QStringList{path(name)});
        QCOMPARE(resolvedBookmarks(), QStringList{path(name)});
        QCOMPARE(names(), u"a.txt"_s);
    }

    void resolvesBookmarks()
    {
        m_platform->userDefaults.setByteArrayList(IndexedFolders::kBookmarksKey, {"garbage"});
        writeFile(path(u"Projects/a.txt"_s), "A");
        QVERIFY(launch() && add({u"Projects"_s}));
        QVERIFY(QFile::rename(path(u"Projects"_s), path(u"Work"_s)));
        QVERIFY(launch());
        QCOMPARE(folders(), QStringList{path(u"Work"_s)});
        QVERIFY(remove(u"Work"_s));
        QCOMPARE(savedBookmarks(), QByteArrayList{"garbage"});
        QCOMPARE(m_home->log.size(), 2);
        for (const QString &line : std::as_const(m_home->log))
            QVERIFY2(line.startsWith(u"Failed to resolve bookmark: "_s), qPrintable(line));
    }

    void removesAFolderButNotItsSibling()
    {
        writeFile(path(u"Projects/a.txt"_s), "A");
        writeFile(path(u"Projects-old/b.txt"_s), "B");
        QVERIFY(launch() && add({u"Projects"_s, u"Projects-old"_s}));
        QCOMPARE(names(), u"a.txt b.txt"_s);
        QVERIFY(remove(u"Projects/"_s));
        QCOMPARE(names(), u"b.txt"_s);
        QVERIFY(isSaved());
        QCOMPARE(savedPaths(), QStringList{path(u"Projects-old"_s)});
        QCOMPARE(resolvedBookmarks(), QStringList{path(u"Projects-old"_s)});
    }

    void commonFoldersComeBack()
    {
        writeFile(path(u"Documents/a.txt"_s), "A");
        writeFile(path(u"Downloads/b.txt"_s), "B");
        QVERIFY(launch() && remove(u"Documents"_s));
        QCOMPARE(names(), u"b.txt"_s);
        QCOMPARE(savedPaths(), QStringList{path(u"Downloads"_s)});
        QVERIFY(launch());
        QCOMPARE(names(), u"b.txt a.txt"_s);
        QCOMPARE(savedPaths(), (QStringList{path(u"Downloads"_s), path(u"Documents"_s)}));
    }

    void replacesADamagedIndex()
    {
        writeFile(indexPath(), "[{\"id\":");
        QVERIFY(launch());
        QCOMPARE(m_indexer->totalFilesIndexed(), 0);
        QCOMPARE(readFile(indexPath()), "[{\"id\":");
        writeFile(path(u"Documents/a.txt"_s), "A");
        QVERIFY(launch());
        QCOMPARE(names(), u"a.txt"_s);
        QVERIFY(isSaved());
        QCOMPARE(m_home->log, QStringList());
    }

    void refreshesOnlyWhenAskedToReindex()
    {
        writeFile(path(u"Documents/changed.txt"_s), "old");
        writeFile(path(u"Documents/gone.txt"_s), "G");
        QVERIFY(launch());
        const QList<IndexedFile> before = files();
        writeFile(path(u"Documents/changed.txt"_s), "new text");
        writeFile(path(u"Documents/added.txt"_s), "A");
        QVERIFY(QFile::remove(path(u"Documents/gone.txt"_s)));
        m_indexer->indexFolder(url(u"Documents"_s));
        QVERIFY(settle(*m_indexer));
        QCOMPARE(names(), u"changed.txt gone.txt added.txt"_s);
        QCOMPARE(files().first(2), before);
        m_indexer->reindexAll();
        QVERIFY(settle(*m_indexer));
        QCOMPARE(names(), u"added.txt changed.txt"_s);
        QCOMPARE(files()[1]->extractedText->text(), "new text");
        QCOMPARE(m_indexer->totalFilesIndexed(), 2);
        QVERIFY(isSaved());
    }

    void tellsItsProgress()
    {
        const QStringList expected = writeMany(u"Documents"_s, 500);
        QList<double> progress;
        QList<bool> walking;
        m_indexer = std::make_unique<FileIndexer>(*m_platform);
        connect(m_indexer.get(), &FileIndexer::indexingProgressChanged, this, [&] {
            QVERIFY(m_indexer->isIndexing());
            progress.append(m_indexer->indexingProgress());
        });
        connect(m_indexer.get(), &FileIndexer::isIndexingChanged, this, [&] {
            walking.append(m_indexer->isIndexing());
        });
        QVERIFY(settle(*m_indexer));
        QCOMPARE(walking, (QList<bool>{true, false}));
        QVERIFY(progress.size() > 1 && progress.first() > 0);
        QVERIFY(std::ranges::is_sorted(progress));
        QCOMPARE(progress.last(), 1.0);
        // In listing order, however many workers there are.
        QCOMPARE(names(), expected.join(u' '));
    }

    void endsEveryWalk()
    {
        // One of an empty folder, then one of a folder that is not there any more.
        QVERIFY(QDir().mkdir(path(u"Documents"_s)));
        m_indexer = std::make_unique<FileIndexer>(*m_platform);
        QSignalSpy walking(m_indexer.get(), &FileIndexer::isIndexingChanged);
        QVERIFY(settle(*m_indexer));
        QCOMPARE(walking.count(), 2);
        QCOMPARE(m_indexer->indexingProgress(), 0.0);
        QVERIFY(isSaved());
        writeFile(path(u"Projects/a.txt"_s), "A");
        QVERIFY(add({u"Projects"_s, u"Nowhere"_s}));
        QCOMPARE(folders().size(), 3);
        QCOMPARE(m_home->log.size(), 1);
        QVERIFY(m_home->log.first().startsWith(u"Failed to save bookmark: "_s));
        QVERIFY(QDir(path(u"Projects"_s)).removeRecursively());
        walking.clear();
        m_indexer->indexFolder(url(u"Projects"_s));
        QVERIFY(settle(*m_indexer));
        QCOMPARE(walking.count(), 2);
        QVERIFY(!m_indexer->isIndexing());
        QCOMPARE(names(), u"a.txt"_s);
        QVERIFY(launch());
        QCOMPARE(folders(), QStringList{path(u"Documents"_s)});
    }

    void clearsAllIndexedData()
    {
        writeMany(u"Documents"_s, 100);
        writeMany(u"Downloads"_s, 100);
        m_platform->sentenceEmbedding = std::make_unique<FakeSentenceEmbedding>();
        auto owned = std::make_unique<FakePDFDocumentReader>();
        const FakePDFDocumentReader &reader = *owned;
        m_platform->pdfDocuments = std::move(owned);
        const QString vectors = m_platform->folders.cache + u"/vectors"_s;
        QVERIFY(launch() && QFile::exists(vectors));
        const QUuid oldId = files().first()->id;

        bool isCleanOnDisk = false;
        connect(m_indexer.get(), &FileIndexer::isIndexingChanged, this, [&] {
            isCleanOnDisk = isCleanOnDisk
                            || (m_indexer->isIndexing() && !QFile::exists(vectors)
                                && IndexFile::load(indexPath()) == QList<IndexedFile>());
        });
        m_indexer->clearIndexedData();
        QVERIFY(files().isEmpty());
        QCOMPARE(m_indexer->totalFilesIndexed(), 0);
        QVERIFY(settle(*m_indexer));
        QVERIFY(isCleanOnDisk);
        QCOMPARE(reader.forgotten, 1);
        QCOMPARE(files().size(), 200);
        QVERIFY(files().first()->id != oldId);
        QCOMPARE(m_indexer->totalFilesIndexed(), 200);
        QVERIFY(isSaved() && QFile::exists(vectors));

        QVERIFY(remove(u"Documents"_s) && remove(u"Downloads"_s));
        m_indexer->clearIndexedData();
        QVERIFY(settle(*m_indexer));
        QVERIFY(files().isEmpty() && isSaved());
        QVERIFY(!m_indexer->isIndexing());
        QCOMPARE(m_indexer->totalFilesIndexed(), 0);
    }

    void startsAnewDuringAWalk_data()
    {
        QTest::addColumn<QByteArray>("steps"); // c: clear, i: re-index, r: remove, w: wait
        for (const char *steps : {"i",
                                  "c",
                                  "ii",
                                  "ic",
                                  "ci",
                                  "cc",
                                  "wi",
                                  "wc",
                                  "iwi",
                                  "cwc",
                                  "iwcwi",
                                  "cr",
                                  "rc",
                                  "iwr"})
            QTest::newRow(steps) << QByteArray(steps);
    }
    void startsAnewDuringAWalk()
    {
        QFETCH(QByteArray, steps);
        const QString names = writeMany(u"Documents"_s, 600).join(u' ');
        writeMany(u"Projects"_s, 600);
        QVERIFY(launch());
        m_indexer->addFolderURL(url(u"Projects"_s));
        QVERIFY(QTest::qWaitFor([&] { return m_indexer->indexingProgress() > 0; }));
        for (const char step : steps) {
            if (step == 'c') {
                m_indexer->clearIndexedData();
                QVERIFY(files().isEmpty());
            } else if (step == 'i') {
                m_indexer->reindexAll();
            } else if (step == 'r') {
                m_indexer->removeFolder(url(u"Projects"_s));
            } else {
                QVERIFY(QTest::qWaitFor([&] { return !files().isEmpty(); }));
            }
        }
        QVERIFY(settle(*m_indexer));
        QVERIFY(!m_indexer->isIndexing() && isSaved());
        const bool isRemoved = steps.contains('r');
        QVERIFY(!isToWalk());
        QCOMPARE(this->names(), isRemoved ? names : names + u' ' + names);
        QCOMPARE(m_indexer->totalFilesIndexed(), files().size());
    }

    void finishesAtTheNextStart_data()
    {
        QTest::addColumn<bool>("isKnown");
        QTest::newRow("the first walk of a folder") << false;
        QTest::newRow("a walk of all anew") << true;
    }
    void finishesAtTheNextStart()
    {
        QFETCH(bool, isKnown);
        writeFile(path(u"Documents/a.txt"_s), "old");
        const QString expected = u"a.txt "_s + writeMany(u"Projects"_s, 600).join(u' ');
        QVERIFY(launch());
        if (isKnown) {
            QVERIFY(add({u"Projects"_s}));
            writeFile(path(u"Documents/a.txt"_s), "new");
            m_indexer->reindexAll();
        } else {
            m_indexer->addFolderURL(url(u"Projects"_s));
        }
        QVERIFY(QTest::qWaitFor([&] { return m_indexer->indexingProgress() > 0; }));
        {
            // Another process has the index: nothing is waited for.
            m_indexer.reset();
            FileLock lock;
            QVERIFY(QTest::qWaitFor([&] {
                lock = FileLock(indexPath() + u".lock"_s);
                return lock.state() == FileLock::State::held;
            }));
            m_indexer = std::make_unique<FileIndexer>(*m_platform);
            QVERIFY(QTest::qWaitFor([&] { return !m_indexer->isBusy(); }));
            QVERIFY(isToWalk());
        }
        QVERIFY(launch());
        QCOMPARE(names(), expected);
        QCOMPARE(files().first()->extractedText->text(), isKnown ? "new" : "old");
        QVERIFY(isSaved() && !isToWalk());

        m_indexer = std::make_unique<FileIndexer>(*m_platform);
        QSignalSpy walking(m_indexer.get(), &FileIndexer::isIndexingChanged);
        QVERIFY(settle(*m_indexer));
        QCOMPARE(walking.count(), 0);
    }

    void aDriveGoesAway()
    {
        writeMany(u"Drive"_s, 800);
        QVERIFY(launch() && add({u"Drive"_s}));
        m_indexer->reindexAll();
        QVERIFY(QTest::qWaitFor([&] { return m_indexer->indexingProgress() > 0; }));
        QVERIFY(QFile::rename(path(u"Drive"_s), path(u"Elsewhere"_s)));
        QVERIFY(settle(*m_indexer));
        QVERIFY(files().size() < 800 && isSaved());
        QCOMPARE(m_indexer->totalFilesIndexed(), files().size());
        m_indexer->reindexAll();
        QVERIFY(settle(*m_indexer));
        QVERIFY(files().isEmpty() && isSaved());
        QCOMPARE(m_indexer->totalFilesIndexed(), 0);
        QCOMPARE(folders(), QStringList{path(u"Drive"_s)});
        QVERIFY(QFile::rename(path(u"Elsewhere"_s), path(u"Drive"_s)));
        m_indexer->reindexAll();
        QVERIFY(settle(*m_indexer));
        QCOMPARE(files().size(), 800);
    }

    void removesAFolderDuringItsWalk()
    {
        writeMany(u"Projects"_s, 1500);
        QVERIFY(launch());
        m_indexer->addFolderURL(url(u"Projects"_s));
        QVERIFY(QTest::qWaitFor([&] { return m_indexer->indexingProgress() > 0; }));
        QVERIFY(remove(u"Projects"_s));
        QVERIFY(!m_indexer->isIndexing());
        QVERIFY(files().isEmpty() && isSaved());
        QVERIFY(savedPaths().isEmpty() && savedBookmarks().isEmpty());
    }

    void addsAndRemovesAtOnce()
    {
        // A bookmark that is long looked for keeps the removals busy.
        for (int i = 0; i < 1000; ++i)
            QVERIFY(QDir().mkpath(path(u"Many/%1"_s.arg(i))));
        QVERIFY(QDir().mkdir(path(u"Gone"_s)));
        const QByteArray lost = *FolderBookmark::create(path(u"Gone"_s));
        QVERIFY(QDir().rmdir(path(u"Gone"_s)));
        m_platform->userDefaults.setByteArrayList(IndexedFolders::kBookmarksKey, {lost});
        for (const QString &name : {u"A"_s, u"B"_s, u"C"_s})
            writeFile(path(name + u"/file.txt"_s), "x");
        QVERIFY(launch() && add({u"A"_s}));
        m_indexer->removeFolder(url(u"A"_s));
        m_indexer->addFolderURL(url(u"B"_s));
        m_indexer->addFolderURL(url(u"C"_s));
        QVERIFY(remove(u"C"_s));
        QCOMPARE(folders(), QStringList{path(u"B"_s)});
        QCOMPARE(savedPaths(), folders());
        QCOMPARE(names(), u"file.txt"_s);
        QVERIFY(isSaved());
        QCOMPARE(resolvedBookmarks().join(u' '), u' ' + path(u"B"_s));
    }

    void aFolderWithinAnotherKeepsItsFiles()
    {
        writeFile(path(u"Projects/a.txt"_s), "A");
        writeFile(path(u"Projects/.notes/b.txt"_s), "B");
        QVERIFY(launch() && add({u"Projects"_s}) && add({u"Projects/.notes"_s}));
        QCOMPARE(files().size(), 2);
        QVERIFY(remove(u"Projects"_s));
        QCOMPARE(names(), u"b.txt"_s);
    }

    void aRenamedFolderLeavesNothingBehind()
    {
        writeFile(path(u"Projects/a.txt"_s), "A");
        QVERIFY(launch() && add({u"Projects"_s}));
        m_indexer.reset();
        QVERIFY(QDir().rename(path(u"Projects"_s), path(u"Plans"_s)));
        QVERIFY(launch());
        QCOMPARE(folders(), QStringList{path(u"Plans"_s)});
        QVERIFY(remove(u"Plans"_s));
        QVERIFY(savedPaths().isEmpty() && savedBookmarks().isEmpty());
    }

    void addsAFolderWhileStartingUp_data()
    {
        QTest::addColumn<int>("known");
        for (int i = 0; i < 8; ++i) // it does not always come to a race
            QTest::addRow("%s an index, %d", i % 2 == 0 ? "without" : "with", i) << i % 2 * 300;
    }
    void addsAFolderWhileStartingUp()
    {
        QFETCH(int, known);
        writeFile(path(u"New/b.txt"_s), "B");
        if (known > 0) {
            writeMany(u"Old"_s, known);
            QVERIFY(launch() && add({u"Old"_s}));
        }
        // Without its bookmark the old folder is known by its path alone.
        m_platform->userDefaults.setByteArrayList(IndexedFolders::kBookmarksKey, {});
        m_indexer = std::make_unique<FileIndexer>(*m_platform);
        QVERIFY(add({u"New"_s}));
        QCOMPARE(files().size(), known + 1);
        QCOMPARE(m_indexer->totalFilesIndexed(), known + 1);
        QVERIFY(isSaved());
        QCOMPARE(folders().size(), known > 0 ? 2 : 1);
        QCOMPARE(savedPaths(), folders());
    }

    void sharesAHomeWithAnother()
    {
        writeMany(u"Documents"_s, 300);
        writeMany(u"Downloads"_s, 300);
        const auto otherPlatform = newPlatform();
        m_indexer = std::make_unique<FileIndexer>(*m_platform);
        FileIndexer other(*otherPlatform);
        bool isWhole = true;
        for (const FileIndexer *indexer : {m_indexer.get(), &other}) {
            connect(indexer, &FileIndexer::indexedFilesChanged, this, [&] {
                isWhole = isWhole && (!QFile::exists(indexPath()) || IndexFile::load(indexPath()));
            });
        }
        QVERIFY(settle(*m_indexer) && settle(other));
        QVERIFY(isWhole && isSaved());
        QCOMPARE(files().size(), 600);
        QCOMPARE(other.indexedFiles(), files());
        QCOMPARE(other.indexedFolderURLs(), m_indexer->indexedFolderURLs());

        // Each takes over what the other has done since.
        writeFile(path(u"Projects/p.txt"_s), "P");
        QVERIFY(add({u"Projects"_s}));
        other.removeFolder(url(u"Downloads"_s));
        QVERIFY(settle(other));
        QCOMPARE(IndexFile::load(indexPath())->size(), 301);
        const QList<QUrl> left{url(u"Documents"_s), url(u"Projects"_s)};
        QCOMPARE(other.indexedFolderURLs(), left);
        writeFile(path(u"Pictures/p.txt"_s), "P");
        QVERIFY(add({u"Pictures"_s}));
        QCOMPARE(m_indexer->indexedFolderURLs(), left + QList{url(u"Pictures"_s)});
        QVERIFY(m_platform->userDefaults.stored().result());
        const UserDefaults onDisk(m_platform->userDefaults.filePath());
        QCOMPARE(onDisk.stringList(IndexedFolders::kPathsKey), folders());
    }

    void logsThatTheIndexCannotBeSaved()
    {
        writeFile(path(u"Documents/a.txt"_s), "A");
        writeFile(m_platform->folders.data, "a file in the folder's place");
        QVERIFY(launch());
        QCOMPARE(names(), u"a.txt"_s);
        QCOMPARE(m_home->log.size(), 1);
        QVERIFY(m_home->log.first().startsWith(u"Failed to save index: "_s));
        QVERIFY(m_home->log.first().size() > u"Failed to save index: "_s.size());
    }

    void readsPDFDocuments_data()
    {
        QTest::addColumn<std::optional<FakePages>>("pages");
        QTest::addColumn<std::optional<QByteArray>>("text");
        const auto row = [](const char *name, std::optional<FakePages> pages, auto... text) {
            QTest::newRow(name) << pages << std::optional<QByteArray>(text...);
        };
        FakePages many;
        QByteArray firstTen;
        for (int i = 1; i <= 30; ++i) {
            many.append(u"Page %1é"_s.arg(i));
            if (i <= 10)
                firstTen += many.last()->toUtf8() + '\n';
        }
        const QByteArray letters(9000, 'x');
        const auto page = [&](int count) { return QString::fromUtf8(letters.first(count)); };
        row("ten pages at most", many, firstTen);
        row("cut", FakePages(3, page(3000)), letters.first(3000) + '\n' + letters.first(1999));
        row("cut in the first page", FakePages{page(9000), u"y"_s}, letters.first(5000));
        row("full", FakePages{page(4999), u"y"_s}, letters.first(4999) + '\n');
        row("scanned", FakePages(3, std::nullopt));
        row("partly scanned", FakePages{std::nullopt, u"a"_s, std::nullopt}, QByteArray("a\n"));
        row("text behind ten scanned pages", FakePages(10, std::nullopt) + FakePages{u"a"_s});
        row("no pages", FakePages());
        row("cannot be opened", std::nullopt);
    }
    void readsPDFDocuments()
    {
        QFETCH(std::optional<FakePages>, pages);
        QFETCH(std::optional<QByteArray>, text);
        const QString pdf = path(u"Documents/some.Pdf"_s);
        writeFile(pdf, "%PDF");
        auto reader = std::make_unique<FakePDFDocumentReader>();
        if (pages)
            reader->documents.insert(pdf, *pages);
        m_platform->pdfDocuments = std::move(reader);
        QVERIFY(launch());
        QCOMPARE(files().size(), 1);
        QCOMPARE(files().first()->extractedText.has_value(), text.has_value());
        if (text)
            QCOMPARE(files().first()->extractedText->text(), *text);
    }

    void keepsTheVectorsOfFiles()
    {
        writeFile(path(u"Documents/a.txt"_s), "text a");
        writeFile(path(u"Documents/b.txt"_s), "text b");
        auto owned = std::make_unique<FakeSentenceEmbedding>();
        FakeSentenceEmbedding &embedding = *owned;
        m_platform->sentenceEmbedding = std::move(owned);
        const QString kept = m_platform->folders.cache + u"/vectors"_s;
        const auto made = [&] {
            const int before = embedding.made;
            const bool isRight = launch() && files().size() == 2
                                 && files()[0].passageVectors() == "a.txt|text a|"
                                 && files()[1].passageVectors() == "b.txt|text b|";
            return isRight ? embedding.made - before : -1;
        };
        QCOMPARE(made(), 2); // by the walk
        QCOMPARE(made(), 0);
        QVERIFY(QFile::remove(kept));
        QCOMPARE(made(), 2);
        writeFile(kept, "damaged");
        QCOMPARE(made(), 2);
        QCOMPARE(made(), 0);
        embedding.number = 2;
        QCOMPARE(made(), 2);
        QCOMPARE(made(), 0);
        writeFile(path(u"Documents/a.txt"_s), "changed");
        m_indexer->reindexAll();
        QVERIFY(settle(*m_indexer));
        QCOMPARE(files()[0].passageVectors(), "a.txt|changed|");
    }

    void letsThePersonPickAFolder()
    {
        writeFile(path(u"Projects/a.txt"_s), "A");
        QVERIFY(launch());
        m_indexer->addFolder(); // without a picker
        auto owned = std::make_unique<FakeFolderPicker>();
        FakeFolderPicker &picker = *owned;
        m_platform->folderPicker = std::move(owned);
        m_indexer->addFolder(); // cancelled
        QVERIFY(folders().isEmpty());
        picker.choice = path(u"Projects"_s);
        m_indexer->addFolder();
        QVERIFY(settle(*m_indexer));
        QCOMPARE(picker.shown, (QStringList{u"Select a folder to index"_s, u"Index Folder"_s}));
        QCOMPARE(names(), u"a.txt"_s);
    }

    void mayGoAtAnyTime_data()
    {
        QTest::addColumn<int>("changes");
        for (const int changes : {0, 1, 2, 5, 12, 20})
            QTest::addRow("after %d changes", changes) << changes;
    }
    void mayGoAtAnyTime()
    {
        QFETCH(int, changes);
        writeMany(u"Documents"_s, 700);
        writeMany(u"Projects"_s, 100);
        m_indexer = std::make_unique<FileIndexer>(*m_platform);
        m_indexer->addFolderURL(url(u"Projects"_s));
        int seen = 0;
        connect(m_indexer.get(), &FileIndexer::indexedFilesChanged, this, [&] { ++seen; });
        connect(m_indexer.get(), &FileIndexer::isIndexingChanged, this, [&] { ++seen; });
        QVERIFY(QTest::qWaitFor([&] { return seen >= changes; }));
        QVERIFY(launch());
        m_indexer->reindexAll();
        QVERIFY(settle(*m_indexer));
        // What is asked for before the folders are restored goes with it.
        QCOMPARE(folders().size(), changes == 0 ? 1 : 2);
        QCOMPARE(files().size(), changes == 0 ? 700 : 800);
        QVERIFY(isSaved());
    }

private:
    static bool settle(const FileIndexer &indexer)
    {
        return QTest::qWaitFor([&] { return !indexer.isBusy(); }, 20'000);
    }
    /// Ends the program, so to speak, and starts it again in the same home.
    bool launch()
    {
        m_indexer.reset();
        m_indexer = std::make_unique<FileIndexer>(*m_platform);
        return settle(*m_indexer);
    }
    bool add(const QStringList &relative)
    {
        for (const QString &folder : relative)
            m_indexer->addFolderURL(url(folder));
        return settle(*m_indexer);
    }
    bool remove(const QString &relative)
    {
        m_indexer->removeFolder(url(relative));
        return settle(*m_indexer);
    }

    /// What another run of the program in the same home has.
    [[nodiscard]] std::unique_ptr<Platform> newPlatform() const
    {
        auto platform = std::make_unique<Platform>(m_home->platform.folders);
        platform->log = m_home->platform.log;
        return platform;
    }
    [[nodiscard]] QString path(const QString &relative) const { return m_home->path(relative); }
    [[nodiscard]] QUrl url(const QString &relative) const
    {
        return QUrl::fromLocalFile(path(relative));
    }
    [[nodiscard]] QString indexPath() const
    {
        return m_platform->folders.data + u'/' + FileIndexer::kIndexFileName;
    }
    /// Fills a folder; the names in listing order.
    QStringList writeMany(const QString &folder, int count) const
    {
        QStringList written;
        for (int i = 0; i < count; ++i) {
            written.append(QString::number(100'000 + i) + u".txt"_s);
            writeFile(path(folder + u'/' + written.last()), written.last().toUtf8());
        }
        return written;
    }

    [[nodiscard]] QList<IndexedFile> files() const { return m_indexer->indexedFiles(); }
    [[nodiscard]] bool isSaved() const { return IndexFile::load(indexPath()) == files(); }
    [[nodiscard]] QString names() const
    {
        QStringList list;
        for (const IndexedFile &file : files())
            list.append(file->name);
        return list.join(u' ');
    }
    [[nodiscard]] QStringList folders() const
    {
        QStringList list;
        for (const QUrl &folder : m_indexer->indexedFolderURLs())
            list.append(folder.toLocalFile());
        return list;
    }
    [[nodiscard]] QStringList savedPaths() const
    {
        const auto saved = m_platform->userDefaults.stringList(IndexedFolders::kPathsKey);
        return saved.value_or(QStringList());
    }
    /// Whether a folder's walk has not come to its end, as the next start will see it.
    [[nodiscard]] bool isToWalk() const
    {
        const auto saved = m_platform->userDefaults.stringList(IndexedFolders::kUnwalkedKey);
        return !saved.value_or(QStringList()).isEmpty();
    }
    [[nodiscard]] QByteArrayList savedBookmarks() const
    {
        const auto saved = m_platform->userDefaults.byteArrayList(IndexedFolders::kBookmarksKey);
        return saved.value_or(QByteArrayList());
    }
    /// Where the saved bookmarks lead, empty where nowhere.
    [[nodiscard]] QStringList resolvedBookmarks() const
    {
        QStringList list;
        for (const QByteArray &bookmark : savedBookmarks()) {
            const auto folder = FolderBookmark::resolve(bookmark);
            list.append(folder ? *folder : QString());
        }
        return list;
    }

    std::unique_ptr<SampleHome> m_home;
    std::unique_ptr<Platform> m_platform;
    std::unique_ptr<FileIndexer> m_indexer;
};

QTEST_GUILESS_MAIN(TstFileIndexer)
#include "tst_FileIndexer.moc"
