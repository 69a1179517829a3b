// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/FileIndexer.h"

#include "Platform/Platform.h"
#include "Services/FolderWalk.h"
#include "Services/RecordVectors.h"

#include <QCoroFuture>
#include <QDir>
#include <QPointer>
#include <QThread>
#include <QtConcurrentRun>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace dugwise {

namespace {

/// How long the start-up waits for another process before it goes on with what is on disk.
constexpr std::chrono::seconds kStartUpWait{10};

std::optional<IndexStore::Vectors> storedVectors(const Platform &platform)
{
    if (!platform.sentenceEmbedding)
        return std::nullopt;
    return IndexStore::Vectors{.path = platform.folders.cache + u"/vectors"_s,
                               .version = platform.sentenceEmbedding->version()};
}

bool lacksVectors(const IndexedFile &file)
{
    return file.passageVectors().isEmpty();
}

QString folderPath(const QUrl &folder)
{
    return QDir::cleanPath(folder.toLocalFile());
}

bool isBelow(const QString &path, const QString &folder)
{
    return path.startsWith(folder.endsWith(u'/') ? folder : folder + u'/');
}

} // namespace

/// Counts one task of the indexer for as long as it lives.
class FileIndexer::Task
{
public:
    explicit Task(FileIndexer &indexer)
        : m_indexer(&indexer)
    {
        ++indexer.m_tasks;
    }
    Q_DISABLE_COPY_MOVE(Task)
    ~Task()
    {
        FileIndexer *const indexer = m_indexer.data();
        if (indexer && --indexer->m_tasks == 0)
            Q_EMIT indexer->settled();
    }

private:
    QPointer<FileIndexer> m_indexer;
};

FileIndexer::FileIndexer(Platform &platform, QObject *parent)
    : QObject(parent)
    , m_platform(platform)
    , m_store(platform.folders.data, kIndexFileName, storedVectors(platform), m_workers)
    , m_folders(platform, m_workers)
{
    connect(&m_folders, &IndexedFolders::changed, this, &FileIndexer::indexedFolderURLsChanged);
    m_workers.setMaxThreadCount(std::max(2, QThread::idealThreadCount()));
    startUp();
}

FileIndexer::~FileIndexer()
{
    m_stop.request_stop();
    m_workers.waitForDone();
}

QCoro::Task<void> FileIndexer::startUp()
{
    const QPointer<FileIndexer> self(this);
    const Task task(*this);
    co_await m_folders.restore();
    if (!self)
        co_return;
    co_await restoreIndex();
    if (!self)
        co_return;
    co_await walkAtStart();
    if (!self)
        co_return;
    co_await makeMissingVectors();
}

QCoro::Task<void> FileIndexer::restoreIndex()
{
    const QPointer<FileIndexer> self(this);
    std::optional<QList<IndexedFile>> files = co_await m_store.load();
    if (!self)
        co_return;
    if (files)
        setIndexedFiles(std::move(*files));
    countFiles();
}

/// Adds those common folders that are not listed, and then walks all of them that are; before, the
/// folders whose last walk was cut short.
QCoro::Task<void> FileIndexer::walkAtStart()
{
    const QPointer<FileIndexer> self(this);
    const StandardFolders &standard = m_platform.folders;
    const QStringList common{standard.documents, standard.downloads, standard.desktop};
    const QFuture<QStringList> checking = QtConcurrent::run(&m_workers, existingFolders, common);
    const QStringList present = co_await checking;
    if (!self)
        co_return;
    const bool isAdded = m_folders.append(present);
    m_isRestored = true;
    for (const auto &change : std::exchange(m_waitingChanges, {}))
        change();
    Q_EMIT restored();
    const QStringList unwalked = m_folders.unwalked();
    if (!isAdded && unwalked.isEmpty())
        co_return;
    // Where no folder is new, another process that holds the index is most likely at those walks.
    const std::chrono::seconds limit = isAdded ? kStartUpWait : 0s;
    const std::shared_ptr<IndexStore::Turn> turn = co_await enter(limit);
    if (!turn)
        co_return;
    if (turn->lock.state() == FileLock::State::heldByAnother)
        co_return; // the folders are not saved either: the next start finds them new again
    const IndexingOptions options = IndexingOptions::stored(m_platform.userDefaults);
    QStringList folders;
    for (const QString &folder : m_folders.unwalked()) {
        if (options.isEnabled && unwalked.contains(folder)) // others are walked by who asked for it
            folders.append(folder);
    }
    const QStringList cutShort = folders;
    if (isAdded) {
        folders += common;
        folders.removeDuplicates();
        if (options.isEnabled)
            m_folders.addUnwalked(common);
        m_folders.save(m_folders.paths());
    }
    const int reindexings = m_reindexings;
    for (const QString &path : std::as_const(folders)) {
        if (!m_folders.contains(path))
            continue;
        if (cutShort.contains(path))
            removeRecordsBelow(path); // they may be from before
        co_await walk(path, options);
        if (!self || m_reindexings != reindexings)
            co_return;
    }
}

/// Gives vectors to the records that came without: when those on disk are lost, damaged, or of
/// another version of the embedding.
QCoro::Task<void> FileIndexer::makeMissingVectors()
{
    const QPointer<FileIndexer> self(this);
    if (!m_platform.sentenceEmbedding || std::ranges::none_of(m_indexedFiles, lacksVectors))
        co_return;
    const std::shared_ptr<IndexStore::Turn> turn = co_await enter(kStartUpWait);
    if (!turn)
        co_return;
    const QList<IndexedFile> files = m_indexedFiles;
    if (turn->lock.state() != FileLock::State::held || files.isEmpty())
        co_return;
    const QFuture<QList<IndexedFile>> making = withVectorsInThreads(
        files, m_platform.sentenceEmbedding.get(), m_stop.get_token(), m_workers);
    co_await making;
    if (!self
        || !m_indexedFiles.isSharedWith(files)) // a folder was removed: the next start does it
        co_return;
    QList<IndexedFile> complete;
    for (const QList<IndexedFile> &batch : making.results())
        complete.append(batch);
    setIndexedFiles(complete);
    co_await m_store.saveVectors(complete);
}

void FileIndexer::addFolder()
{
    if (m_platform.folderPicker)
        pickFolder();
}

QCoro::Task<void> FileIndexer::pickFolder()
{
    const QPointer<FileIndexer> self(this);
    const QString message = u"Select a folder to index"_s;
    const QString confirmLabel = u"Index Folder"_s;
    const std::optional<QString> folder =
        co_await m_platform.folderPicker->pickFolder(message, confirmLabel);
    if (self && folder)
        addFolderURL(QUrl::fromLocalFile(*folder));
}

void FileIndexer::addFolderURL(const QUrl &folder)
{
    if (!isRestored([this, folder] { addFolderURL(folder); }))
        return;
    const QString path = folderPath(folder);
    if (m_folders.contains(path))
        return;
    saveBookmark(path);
    m_folders.append({path});
    m_folders.save({path});
    indexFolder(QUrl::fromLocalFile(path));
}

QCoro::Task<void> FileIndexer::saveBookmark(QString folder)
{
    const Task task(*this);
    co_await m_folders.saveBookmark(folder);
}

void FileIndexer::removeFolder(const QUrl &folder)
{
    if (!isRestored([this, folder] { removeFolder(folder); }))
        return;
    const QString path = folderPath(folder);
    m_folders.remove(path);
    removeRecordsBelow(path);
    removeBookmark(path);
    saveRemoval(path);
}

QCoro::Task<void> FileIndexer::removeBookmark(QString folder)
{
    const Task task(*this);
    co_await m_folders.removeBookmark(folder);
}

QCoro::Task<void> FileIndexer::saveRemoval(QString folder)
{
    const QPointer<FileIndexer> self(this);
    const Task task(*this);
    const std::shared_ptr<IndexStore::Turn> turn = co_await enter();
    if (!turn)
        co_return;
    if (!m_folders.contains(folder))
        removeRecordsBelow(folder);
    co_await saveIndex();
}

void FileIndexer::reindexAll()
{
    if (!isRestored([this] { reindexAll(); }))
        return;
    const IndexingOptions options = IndexingOptions::stored(m_platform.userDefaults);
    if (options.isEnabled)
        reindex(options, Caches::kept);
}

void FileIndexer::clearIndexedData()
{
    if (!isRestored([this] { clearIndexedData(); }))
        return;
    setIndexedFiles({});
    countFiles();
    reindex(IndexingOptions::stored(m_platform.userDefaults), Caches::dropped);
}

/// One that follows does all of it again: then this one, and any walk under way, ends early.
QCoro::Task<void> FileIndexer::reindex(IndexingOptions options, Caches caches)
{
    const QPointer<FileIndexer> self(this);
    const Task task(*this);
    const int reindexings = ++m_reindexings;
    if (options.isEnabled)
        m_folders.addUnwalked(m_folders.paths());
    const std::shared_ptr<IndexStore::Turn> turn = co_await enter();
    if (!turn)
        co_return;
    if (options.isEnabled)
        m_folders.addUnwalked(m_folders.paths()); // with those of other processes
    setIndexedFiles({});
    if (caches == Caches::dropped) {
        co_await dropCaches();
        if (!self)
            co_return;
    }
    if (m_reindexings != reindexings)
        co_return;
    setIsIndexing(options.isEnabled);
    setIndexingProgress(0);
    const QList<QUrl> folders = m_folders.urls();
    bool isSaved = false;
    for (const QUrl &folder : folders) {
        const QString path = folderPath(folder);
        if (!m_folders.contains(path)) // removed meanwhile
            continue;
        const bool isWalked = co_await walk(path, options);
        if (!self || m_reindexings != reindexings)
            co_return;
        isSaved = isWalked;
    }
    setIsIndexing(false);
    countFiles();
    if (!isSaved)
        co_await saveIndex();
}

/// What is kept on disk of the files beside their records, and the records on disk.
QCoro::Task<void> FileIndexer::dropCaches()
{
    const QPointer<FileIndexer> self(this);
    const PDFDocumentReader *const reader = m_platform.pdfDocuments.get();
    if (reader) {
        const QFuture<void> forgetting =
            QtConcurrent::run(&m_workers, &PDFDocumentReader::forgetFailures, reader);
        co_await forgetting;
        if (!self)
            co_return;
    }
    const Outcome<Success> outcome = co_await m_store.clear();
    if (self)
        logUnsaved(outcome);
}

QCoro::Task<void> FileIndexer::indexFolder(QUrl folder)
{
    const QPointer<FileIndexer> self(this);
    const Task task(*this);
    const IndexingOptions options = IndexingOptions::stored(m_platform.userDefaults);
    if (!options.isEnabled)
        co_return;
    setIsIndexing(true);
    const QString path = folderPath(folder);
    const bool isListed = m_folders.contains(path);
    m_folders.addUnwalked({path});
    const std::shared_ptr<IndexStore::Turn> turn = co_await enter();
    if (!turn)
        co_return;
    if (isListed && !m_folders.contains(path)) { // removed meanwhile
        setIsIndexing(false);
        co_return;
    }
    co_await walk(path, options);
}

/// Appends the records of the folder's files as they come. Stops early when the folder is removed
/// or all are to be walked again. Tells whether it came to the end and saved the index.
QCoro::Task<bool> FileIndexer::walk(QString folder, IndexingOptions options)
{
    const QPointer<FileIndexer> self(this);
    if (!options.isEnabled)
        co_return false;
    setIsIndexing(true);
    setIndexingProgress(0);
    const int reindexings = m_reindexings;
    // Shared with the worker that lets go of it.
    auto walking = std::make_shared<FolderWalk>(m_platform, m_workers, m_stop.get_token());
    const QCoro::Task<bool> beginning = walking->begin(folder, options, m_indexedFiles, m_metadata);
    const bool isFolderThere = co_await beginning;
    if (!self)
        co_return false;
    freeInWorker(std::exchange(m_metadata, walking->metadata()));
    if (!isFolderThere) {
        setIsIndexing(false);
        co_return false;
    }

    const bool wasListed = m_folders.contains(folder);
    while (!walking->isAtEnd() && m_folders.contains(folder) == wasListed) {
        const QList<IndexedFile> records = co_await walking->next();
        if (!self)
            co_return false;
        if (m_reindexings != reindexings)
            break; // the list may have been emptied already
        append(records);
        setIndexingProgress(walking->progress());
    }
    freeInWorker(std::move(walking));
    setIsIndexing(false);
    if (m_reindexings != reindexings)
        co_return false;
    countFiles();
    const bool isSaved = co_await saveIndex();
    if (self && isSaved)
        m_folders.setWalked(folder);
    co_return isSaved;
}

/// Tells whether it could be saved.
QCoro::Task<bool> FileIndexer::saveIndex()
{
    const QPointer<FileIndexer> self(this);
    const Outcome<Success> outcome = co_await m_store.save(m_indexedFiles);
    const auto isSaved = static_cast<bool>(outcome);
    if (self)
        logUnsaved(outcome);
    co_return isSaved;
}

void FileIndexer::logUnsaved(const Outcome<Success> &outcome) const
{
    if (!outcome)
        m_platform.log(u"Failed to save index: "_s + outcome.error());
}

bool FileIndexer::isRestored(const std::function<void()> &change)
{
    if (!m_isRestored)
        m_waitingChanges.append(change);
    return m_isRestored;
}

/// Enters the store, and takes over what another process has made of the index and the list of
/// folders. Null when the indexer is gone.
QCoro::Task<std::shared_ptr<IndexStore::Turn>>
FileIndexer::enter(std::optional<std::chrono::milliseconds> limit)
{
    const QPointer<FileIndexer> self(this);
    std::shared_ptr<IndexStore::Turn> turn = co_await m_store.enter(limit);
    if (!self)
        co_return std::shared_ptr<IndexStore::Turn>();
    if (turn->changedIndex) {
        setIndexedFiles(std::move(*turn->changedIndex));
        turn->changedIndex.reset();
        co_await m_folders.restore();
        if (!self)
            co_return std::shared_ptr<IndexStore::Turn>();
    }
    co_return turn;
}

void FileIndexer::setIndexedFiles(QList<IndexedFile> files)
{
    freeInWorker(std::exchange(m_indexedFiles, std::move(files)));
    Q_EMIT indexedFilesChanged();
}

/// Lets go of values in a worker: freeing many texts takes longer than a frame.
template <typename... Values>
void FileIndexer::freeInWorker(Values... values)
{
    auto letGo = [... held = std::move(values)] {};
    [[maybe_unused]] const QFuture<void> done = QtConcurrent::run(&m_workers, std::move(letGo));
}

/// Those of folders that are listed by themselves stay.
void FileIndexer::removeRecordsBelow(const QString &folder)
{
    QStringList others = m_folders.paths();
    others.removeIf([&](const QString &path) { return !isBelow(path, folder); });
    QList<IndexedFile> kept;
    std::ranges::copy_if(m_indexedFiles, std::back_inserter(kept), [&](const IndexedFile &file) {
        return !isBelow(file->path, folder)
               || std::ranges::any_of(
                   others, [&](const QString &path) { return isBelow(file->path, path); });
    });
    setIndexedFiles(std::move(kept));
}

void FileIndexer::append(const QList<IndexedFile> &records)
{
    if (records.isEmpty())
        return;
    m_indexedFiles.append(records);
    Q_EMIT indexedFilesChanged();
}

void FileIndexer::setIsIndexing(bool isIndexing)
{
    if (m_isIndexing == isIndexing)
        return;
    m_isIndexing = isIndexing;
    Q_EMIT isIndexingChanged();
}

void FileIndexer::setIndexingProgress(double progress)
{
    if (m_indexingProgress == progress)
        return;
    m_indexingProgress = progress;
    Q_EMIT indexingProgressChanged();
}

void FileIndexer::countFiles()
{
    if (m_totalFilesIndexed == m_indexedFiles.size())
        return;
    m_totalFilesIndexed = m_indexedFiles.size();
    Q_EMIT totalFilesIndexedChanged();
}

} // namespace dugwise
