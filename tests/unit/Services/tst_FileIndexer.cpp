// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/FileAttributes.h"
#include "Platform/FolderBookmark.h"
#include "Services/FileIndexer.h"
#include "Services/IndexFile.h"
#include "support/Fakes.h"
#include "support/SampleFiles.h"
#include "support/SampleHome.h"

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
    }

    void findsNothingInAnEmptyHome()
    {
        m_home->platform.folders.desktop.clear(); // switched off
        FileIndexer indexer(m_home->platform);
        QSignalSpy walking(&indexer, &FileIndexer::isIndexingChanged);
        QVERIFY(indexer.isBusy());
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
        FileIndexer indexer(m_home->platform);
        QVERIFY(settle(indexer));
        const QStringList folders{path(u"Documents"_s), path(u"Downloads"_s), path(u"Desktop"_s)};
        QCOMPARE(folderPaths(indexer), folders);
        QCOMPARE(savedPaths(), folders);
        QVERIFY(savedBookmarks().isEmpty());
        QCOMPARE(names(indexer),
                 (QStringList{u"REPORT.TXT"_s, u"latin.md"_s, u"x.bin"_s, u"c.txt"_s}));
        QCOMPARE(indexer.totalFilesIndexed(), 4);
        QCOMPARE(IndexFile::load(indexPath()), indexer.indexedFiles());

        const IndexedFile report = indexer.indexedFiles().first();
        const auto attributes = fileAttributes(report->path);
        QVERIFY(!report->id.isNull());
        QCOMPARE(report->path, path(u"Documents/b/REPORT.TXT"_s));
        QCOMPARE(report->folderPath, path(u"Documents/b"_s));
        QCOMPARE(report->fileExtension, u"TXT"_s);
        QCOMPARE(report->size, 12'000);
        QCOMPARE(report->modifiedDate.seconds, attributes->modifiedDate.seconds);
        QCOMPARE(report->extractedText->text(), QByteArray(5000, 'r'));
        QVERIFY(!indexer.indexedFiles()[1]->extractedText);
        QVERIFY(!indexer.indexedFiles()[2]->extractedText);
    }

    void restoresWithoutWalking()
    {
        writeFile(path(u"Documents/a.txt"_s), "old");
        const QList<IndexedFile> files = walked();
        writeFile(path(u"Documents/a.txt"_s), "changed");
        writeFile(path(u"Documents/b.txt"_s), "new");
        const auto platform = relaunch();
        FileIndexer indexer(*platform);
        QSignalSpy walking(&indexer, &FileIndexer::isIndexingChanged);
        QVERIFY(settle(indexer));
        QCOMPARE(indexer.indexedFiles(), files);
        QCOMPARE(indexer.totalFilesIndexed(), 1);
        QCOMPARE(folderPaths(indexer), QStringList{path(u"Documents"_s)});
        QCOMPARE(walking.count(), 0);
    }

    void addsAFolderOnce()
    {
        const QString folder = path(u"50% #1?/Ünï\ncode"_s);
        writeFile(folder + u"/a.txt"_s, "A");
        FileIndexer indexer(m_home->platform);
        QVERIFY(settle(indexer));
        indexer.addFolderURL(QUrl::fromLocalFile(folder));
        QVERIFY(settle(indexer));
        QSignalSpy changes(&indexer, &FileIndexer::indexedFolderURLsChanged);
        QSignalSpy walking(&indexer, &FileIndexer::isIndexingChanged);
        indexer.addFolderURL(QUrl::fromLocalFile(folder));
        indexer.addFolderURL(QUrl::fromLocalFile(folder + u"/../Ünï\ncode/"_s));
        QVERIFY(settle(indexer));
        QCOMPARE(changes.count() + walking.count(), 0);
        QCOMPARE(folderPaths(indexer), QStringList{folder});
        QCOMPARE(savedPaths(), QStringList{folder});
        QCOMPARE(savedBookmarks().size(), 1);
        QCOMPARE(*FolderBookmark::resolve(savedBookmarks().first()), folder);
        QCOMPARE(names(indexer), QStringList{u"a.txt"_s});
    }

    void findsARenamedFolderAgain()
    {
        writeFile(path(u"Projects/a.txt"_s), "A");
        walked({u"Projects"_s});
        QVERIFY(QFile::rename(path(u"Projects"_s), path(u"Work"_s)));
        const auto platform = relaunch();
        FileIndexer indexer(*platform);
        QVERIFY(settle(indexer));
        QCOMPARE(folderPaths(indexer), QStringList{path(u"Work"_s)});
    }

    void keepsBookmarksThatCannotBeResolved()
    {
        m_home->platform.userDefaults.setByteArrayList(FileIndexer::kBookmarksKey, {"garbage"});
        writeFile(path(u"Projects/a.txt"_s), "A");
        walked({u"Projects"_s});
        const auto platform = relaunch();
        FileIndexer indexer(*platform);
        QVERIFY(settle(indexer));
        indexer.removeFolder(url(u"Projects"_s));
        QVERIFY(settle(indexer));
        QCOMPARE(savedBookmarks(), QByteArrayList{"garbage"});
        QCOMPARE(m_home->log.size(), 2);
        for (const QString &line : std::as_const(m_home->log))
            QVERIFY2(line.startsWith(u"Failed to resolve bookmark: "_s), qPrintable(line));
    }

    void removesAFolderButNotItsSibling()
    {
        writeFile(path(u"Projects/a.txt"_s), "A");
        writeFile(path(u"Projects-old/b.txt"_s), "B");
        FileIndexer indexer(m_home->platform);
        QVERIFY(settle(indexer));
        indexer.addFolderURL(url(u"Projects"_s));
        indexer.addFolderURL(url(u"Projects-old"_s));
        QVERIFY(settle(indexer));
        QCOMPARE(indexer.indexedFiles().size(), 2);
        indexer.removeFolder(QUrl::fromLocalFile(path(u"Projects/"_s)));
        QVERIFY(settle(indexer));
        QCOMPARE(names(indexer), QStringList{u"b.txt"_s});
        QCOMPARE(IndexFile::load(indexPath()), indexer.indexedFiles());
        QCOMPARE(savedPaths(), QStringList{path(u"Projects-old"_s)});
        QCOMPARE(savedBookmarks().size(), 1);
        QCOMPARE(*FolderBookmark::resolve(savedBookmarks().first()), path(u"Projects-old"_s));
    }

    void commonFoldersComeBack()
    {
        writeFile(path(u"Documents/a.txt"_s), "A");
        writeFile(path(u"Downloads/b.txt"_s), "B");
        {
            FileIndexer indexer(m_home->platform);
            QVERIFY(settle(indexer));
            indexer.removeFolder(url(u"Documents"_s));
            QVERIFY(settle(indexer));
            QCOMPARE(names(indexer), QStringList{u"b.txt"_s});
            QCOMPARE(savedPaths(), QStringList{path(u"Downloads"_s)});
        }
        const auto platform = relaunch();
        FileIndexer indexer(*platform);
        QVERIFY(settle(indexer));
        QCOMPARE(names(indexer), (QStringList{u"b.txt"_s, u"a.txt"_s}));
        QCOMPARE(savedPaths(), (QStringList{path(u"Downloads"_s), path(u"Documents"_s)}));
    }

    void replacesADamagedIndex()
    {
        writeFile(indexPath(), "[{\"id\":");
        {
            FileIndexer indexer(m_home->platform);
            QVERIFY(settle(indexer));
            QCOMPARE(indexer.totalFilesIndexed(), 0);
            QCOMPARE(readFile(indexPath()), "[{\"id\":");
        }
        writeFile(path(u"Documents/a.txt"_s), "A");
        QCOMPARE(walked().size(), 1);
        QCOMPARE(IndexFile::load(indexPath())->size(), 1);
        QCOMPARE(m_home->log, QStringList());
    }

    void refreshesOnlyWhenAskedToReindex()
    {
        writeFile(path(u"Documents/changed.txt"_s), "old");
        writeFile(path(u"Documents/gone.txt"_s), "G");
        FileIndexer indexer(m_home->platform);
        QVERIFY(settle(indexer));
        const QList<IndexedFile> before = indexer.indexedFiles();
        writeFile(path(u"Documents/changed.txt"_s), "new text");
        writeFile(path(u"Documents/added.txt"_s), "A");
        QVERIFY(QFile::remove(path(u"Documents/gone.txt"_s)));
        indexer.indexFolder(url(u"Documents"_s));
        QVERIFY(settle(indexer));
        QCOMPARE(indexer.indexedFiles().first(2), before);
        QCOMPARE(names(indexer).mid(2), QStringList{u"added.txt"_s});
        indexer.reindexAll();
        QVERIFY(settle(indexer));
        QCOMPARE(names(indexer), (QStringList{u"added.txt"_s, u"changed.txt"_s}));
        QCOMPARE(indexer.indexedFiles()[1]->extractedText->text(), "new text");
        QCOMPARE(indexer.totalFilesIndexed(), 2);
        QCOMPARE(IndexFile::load(indexPath()), indexer.indexedFiles());
    }

    void tellsItsProgress()
    {
        const QStringList files = writeMany(u"Documents"_s, 500);
        FileIndexer indexer(m_home->platform);
        QList<double> progress;
        QList<bool> walking;
        connect(&indexer, &FileIndexer::indexingProgressChanged, this, [&] {
            QVERIFY(indexer.isIndexing());
            progress.append(indexer.indexingProgress());
        });
        connect(&indexer, &FileIndexer::isIndexingChanged, this, [&] {
            walking.append(indexer.isIndexing());
        });
        QVERIFY(settle(indexer));
        QCOMPARE(walking, (QList<bool>{true, false}));
        QVERIFY(progress.size() > 1 && progress.first() > 0);
        QVERIFY(std::ranges::is_sorted(progress));
        QCOMPARE(progress.last(), 1.0);
        QCOMPARE(names(indexer), files); // in listing order, however many workers there are
    }

    void walksAnEmptyFolder()
    {
        QVERIFY(QDir().mkdir(path(u"Documents"_s)));
        FileIndexer indexer(m_home->platform);
        QSignalSpy walking(&indexer, &FileIndexer::isIndexingChanged);
        QVERIFY(settle(indexer));
        QCOMPARE(walking.count(), 2);
        QVERIFY(!indexer.isIndexing());
        QCOMPARE(indexer.indexingProgress(), 0.0);
        QCOMPARE(IndexFile::load(indexPath()), QList<IndexedFile>());
    }

    void endsTheWalkOfAFolderThatIsGone()
    {
        writeFile(path(u"Projects/a.txt"_s), "A");
        {
            FileIndexer indexer(m_home->platform);
            QVERIFY(settle(indexer));
            indexer.addFolderURL(url(u"Projects"_s));
            indexer.addFolderURL(url(u"Nowhere"_s));
            QVERIFY(settle(indexer));
            QVERIFY(!indexer.isIndexing());
            QCOMPARE(indexer.indexedFolderURLs().size(), 2);
            QCOMPARE(m_home->log.size(), 1);
            QVERIFY(m_home->log.first().startsWith(u"Failed to save bookmark: "_s));
            QVERIFY(QDir(path(u"Projects"_s)).removeRecursively());
            QSignalSpy walking(&indexer, &FileIndexer::isIndexingChanged);
            indexer.indexFolder(url(u"Projects"_s));
            QVERIFY(settle(indexer));
            QCOMPARE(walking.count(), 2);
            QVERIFY(!indexer.isIndexing());
            QCOMPARE(names(indexer), QStringList{u"a.txt"_s});
        }
        const auto platform = relaunch();
        FileIndexer indexer(*platform);
        QVERIFY(settle(indexer));
        QVERIFY(indexer.indexedFolderURLs().isEmpty());
    }

    void removesAFolderDuringItsWalk()
    {
        writeMany(u"Projects"_s, 1500);
        FileIndexer indexer(m_home->platform);
        QVERIFY(settle(indexer));
        indexer.addFolderURL(url(u"Projects"_s));
        QVERIFY(QTest::qWaitFor([&] { return indexer.indexingProgress() > 0; }));
        indexer.removeFolder(url(u"Projects"_s));
        QVERIFY(settle(indexer));
        QVERIFY(!indexer.isIndexing());
        QVERIFY(indexer.indexedFiles().isEmpty());
        QCOMPARE(IndexFile::load(indexPath()), QList<IndexedFile>());
        QVERIFY(savedPaths().isEmpty() && savedBookmarks().isEmpty());
    }

    void removesAFolderAtOnce()
    {
        writeFile(path(u"Projects/a.txt"_s), "A");
        FileIndexer indexer(m_home->platform);
        QVERIFY(settle(indexer));
        indexer.addFolderURL(url(u"Projects"_s));
        indexer.removeFolder(url(u"Projects"_s));
        QVERIFY(settle(indexer));
        QVERIFY(indexer.indexedFolderURLs().isEmpty() && indexer.indexedFiles().isEmpty());
        QVERIFY(savedPaths().isEmpty());
        QVERIFY(savedBookmarks().isEmpty());
    }

    void removesOneFolderWhileAddingAnother()
    {
        // A bookmark that is long looked for keeps the removal busy.
        for (int i = 0; i < 1000; ++i)
            QVERIFY(QDir().mkpath(path(u"Many/%1"_s.arg(i))));
        QVERIFY(QDir().mkdir(path(u"Gone"_s)));
        const QByteArray lost = *FolderBookmark::create(path(u"Gone"_s));
        QVERIFY(QDir().rmdir(path(u"Gone"_s)));
        m_home->platform.userDefaults.setByteArrayList(FileIndexer::kBookmarksKey, {lost});
        writeFile(path(u"A/a.txt"_s), "A");
        writeFile(path(u"B/b.txt"_s), "B");
        FileIndexer indexer(m_home->platform);
        QVERIFY(settle(indexer));
        indexer.addFolderURL(url(u"A"_s));
        QVERIFY(settle(indexer));
        indexer.removeFolder(url(u"A"_s));
        indexer.addFolderURL(url(u"B"_s));
        QVERIFY(settle(indexer));
        QCOMPARE(savedBookmarks().size(), 2);
        QCOMPARE(savedBookmarks().first(), lost);
        QCOMPARE(*FolderBookmark::resolve(savedBookmarks().last()), path(u"B"_s));
        QCOMPARE(names(indexer), QStringList{u"b.txt"_s});
    }

    void addsAFolderWhileStartingUp_data()
    {
        QTest::addColumn<int>("known");
        QTest::newRow("without an index") << 0;
        QTest::newRow("with an index") << 300;
    }
    void addsAFolderWhileStartingUp()
    {
        QFETCH(int, known);
        writeFile(path(u"New/b.txt"_s), "B");
        if (known > 0) {
            writeMany(u"Old"_s, known);
            walked({u"Old"_s});
        }
        // Without its bookmark the old folder is known by its path alone.
        m_home->platform.userDefaults.setByteArrayList(FileIndexer::kBookmarksKey, {});
        const auto platform = relaunch();
        FileIndexer indexer(*platform);
        indexer.addFolderURL(url(u"New"_s));
        QVERIFY(settle(indexer));
        QCOMPARE(indexer.indexedFiles().size(), known + 1);
        QCOMPARE(indexer.totalFilesIndexed(), known + 1);
        QCOMPARE(IndexFile::load(indexPath()), indexer.indexedFiles());
        QCOMPARE(indexer.indexedFolderURLs().size(), known > 0 ? 2 : 1);
        QCOMPARE(savedPaths(), folderPaths(indexer));
    }

    void sharesAHomeWithAnother()
    {
        writeMany(u"Documents"_s, 300);
        writeMany(u"Downloads"_s, 300);
        const auto platform = relaunch();
        FileIndexer one(m_home->platform);
        FileIndexer other(*platform);
        bool isWhole = true;
        for (const FileIndexer *indexer : {&one, &other}) {
            connect(indexer, &FileIndexer::indexedFilesChanged, this, [&] {
                isWhole = isWhole && (!QFile::exists(indexPath()) || IndexFile::load(indexPath()));
            });
        }
        QVERIFY(settle(one) && settle(other));
        QVERIFY(isWhole);
        for (const FileIndexer *indexer : {&one, &other}) {
            QCOMPARE(indexer->indexedFiles().size(), 600);
            QCOMPARE(indexer->indexedFolderURLs().size(), 2);
        }
        QCOMPARE(IndexFile::load(indexPath())->size(), 600);

        // Each takes over what the other has done since.
        writeFile(path(u"Projects/p.txt"_s), "P");
        one.addFolderURL(url(u"Projects"_s));
        QVERIFY(settle(one));
        other.removeFolder(url(u"Downloads"_s));
        QVERIFY(settle(other));
        QCOMPARE(IndexFile::load(indexPath())->size(), 301);
    }

    void logsThatTheIndexCannotBeSaved()
    {
        writeFile(path(u"Documents/a.txt"_s), "A");
        writeFile(path(u".local/share/Dugwise"_s), "in the folder's place");
        QCOMPARE(walked().size(), 1);
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
        const auto letters = [](int count) { return QString(count, u'x'); };
        row("ten pages at most", many, firstTen);
        row("cut", FakePages(3, letters(3000)), (letters(3000) + u'\n' + letters(1999)).toUtf8());
        row("cut in the first page", FakePages{letters(9000), u"y"_s}, letters(5000).toUtf8());
        row("full", FakePages{letters(4999), u"y"_s}, letters(4999).toUtf8() + '\n');
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
        m_home->platform.pdfDocuments = std::move(reader);
        const QList<IndexedFile> files = walked();
        QCOMPARE(files.size(), 1);
        QCOMPARE(files.first()->extractedText.has_value(), text.has_value());
        if (text)
            QCOMPARE(files.first()->extractedText->text(), *text);
    }

    void takesMetadata()
    {
        auto index = std::make_unique<FakeMetadataIndex>();
        index->items.insert(path(u"Documents/a.txt"_s),
                            {.lastUsedDate = Instant{1},
                             .downloadedDate = {Instant{2}, Instant{3}},
                             .whereFroms = {u"https://a.example"_s, u"https://b.example"_s},
                             .contentType = {}});
        m_home->platform.metadataIndex = std::move(index);
        writeFile(path(u"Documents/a.txt"_s), "A");
        writeFile(path(u"Documents/b.txt"_s), "B");
        const QList<IndexedFile> files = walked();
        QCOMPARE(files[0]->lastUsedDate, Instant{1});
        QCOMPARE(files[0]->downloadDate, Instant{2});
        QCOMPARE(files[0]->downloadSource, u"https://a.example"_s);
        QVERIFY(!files[1]->lastUsedDate && !files[1]->downloadDate && !files[1]->downloadSource);
    }

    void letsThePersonPickAFolder()
    {
        writeFile(path(u"Projects/a.txt"_s), "A");
        FileIndexer indexer(m_home->platform);
        QVERIFY(settle(indexer));
        indexer.addFolder(); // without a picker
        auto owned = std::make_unique<FakeFolderPicker>();
        FakeFolderPicker &picker = *owned;
        m_home->platform.folderPicker = std::move(owned);
        indexer.addFolder(); // cancelled
        QVERIFY(indexer.indexedFolderURLs().isEmpty());
        picker.choice = path(u"Projects"_s);
        indexer.addFolder();
        QVERIFY(settle(indexer));
        QCOMPARE(picker.shown, (QStringList{u"Select a folder to index"_s, u"Index Folder"_s}));
        QCOMPARE(names(indexer), QStringList{u"a.txt"_s});
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
        auto indexer = std::make_unique<FileIndexer>(m_home->platform);
        indexer->addFolderURL(url(u"Projects"_s));
        int seen = 0;
        connect(indexer.get(), &FileIndexer::indexedFilesChanged, this, [&] { ++seen; });
        connect(indexer.get(), &FileIndexer::isIndexingChanged, this, [&] { ++seen; });
        QVERIFY(QTest::qWaitFor([&] { return seen >= changes; }));
        indexer.reset();
        const auto platform = relaunch();
        FileIndexer next(*platform);
        next.reindexAll();
        QVERIFY(settle(next));
        QCOMPARE(next.indexedFolderURLs().size(), 2);
        QCOMPARE(next.indexedFiles().size(), 800);
        QCOMPARE(IndexFile::load(indexPath()), next.indexedFiles());
    }

private:
    [[nodiscard]] QString path(const QString &relative) const { return m_home->path(relative); }
    [[nodiscard]] QUrl url(const QString &relative) const
    {
        return QUrl::fromLocalFile(path(relative));
    }
    [[nodiscard]] QString indexPath() const
    {
        return m_home->platform.folders.data + u'/' + FileIndexer::kIndexFileName;
    }
    [[nodiscard]] QStringList savedPaths() const
    {
        return m_home->platform.userDefaults.stringList(FileIndexer::kFolderPathsKey)
            .value_or(QStringList());
    }
    [[nodiscard]] QByteArrayList savedBookmarks() const
    {
        return m_home->platform.userDefaults.byteArrayList(FileIndexer::kBookmarksKey)
            .value_or(QByteArrayList());
    }

    static bool settle(const FileIndexer &indexer)
    {
        return QTest::qWaitFor([&] { return !indexer.isBusy(); }, 20'000);
    }
    /// What an indexer of its own finds, together with the folders to be added.
    QList<IndexedFile> walked(const QStringList &folders = {})
    {
        FileIndexer indexer(m_home->platform);
        if (!settle(indexer))
            return {};
        for (const QString &folder : folders)
            indexer.addFolderURL(url(folder));
        return settle(indexer) ? indexer.indexedFiles() : QList<IndexedFile>();
    }
    /// The same home for another run of the program.
    [[nodiscard]] std::unique_ptr<Platform> relaunch() const
    {
        auto platform = std::make_unique<Platform>(m_home->platform.folders);
        platform->log = m_home->platform.log;
        return platform;
    }
    /// Fills a folder; the names in listing order.
    QStringList writeMany(const QString &folder, int count) const
    {
        QStringList files;
        for (int i = 0; i < count; ++i) {
            files.append(QString::number(100'000 + i) + u".txt"_s);
            writeFile(path(folder + u'/' + files.last()), files.last().toUtf8());
        }
        return files;
    }
    static QStringList names(const FileIndexer &indexer)
    {
        QStringList list;
        for (const IndexedFile &file : indexer.indexedFiles())
            list.append(file->name);
        return list;
    }
    static QStringList folderPaths(const FileIndexer &indexer)
    {
        QStringList list;
        for (const QUrl &folder : indexer.indexedFolderURLs())
            list.append(folder.toLocalFile());
        return list;
    }

    std::unique_ptr<SampleHome> m_home;
};

QTEST_GUILESS_MAIN(TstFileIndexer)
#include "tst_FileIndexer.moc"
