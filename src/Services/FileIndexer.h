// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"
#include "Services/IndexStore.h"
#include "Services/IndexedFolders.h"
#include "Services/IndexingOptions.h"

#include <QCoroTask>
#include <QLatin1StringView>
#include <QList>
#include <QObject>
#include <QThreadPool>
#include <QUrl>

#include <chrono>
#include <functional>
#include <memory>
#include <stop_token>

namespace dugwise {

class MetadataIndex;
struct Platform;

/// Knows the folders that are indexed and the records of their files: restores both at start-up,
/// walks folders and keeps the index file. Lives on the UI thread, where all of its state changes;
/// files are listed and read in its own workers.
class FileIndexer : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<QUrl> indexedFolderURLs READ indexedFolderURLs NOTIFY indexedFolderURLsChanged)
    Q_PROPERTY(bool isIndexing READ isIndexing NOTIFY isIndexingChanged)
    Q_PROPERTY(double indexingProgress READ indexingProgress NOTIFY indexingProgressChanged)
    Q_PROPERTY(qsizetype totalFilesIndexed READ totalFilesIndexed NOTIFY totalFilesIndexedChanged)

public:
    static constexpr QLatin1StringView kIndexFileName{"file_index.json"};

    /// Starts the start-up sequence: folders from bookmarks and paths, the index from its file,
    /// then walks of the folders whose last one was cut short, and of the common folders when one
    /// of them is not listed yet. `platform` outlives the indexer.
    explicit FileIndexer(Platform &platform, QObject *parent = nullptr);
    Q_DISABLE_COPY_MOVE(FileIndexer)
    ~FileIndexer() override;

    /// The index, in the order in which records were added.
    [[nodiscard]] QList<IndexedFile> indexedFiles() const { return m_indexedFiles; }
    /// The folders, in the order in which they were added.
    [[nodiscard]] QList<QUrl> indexedFolderURLs() const { return m_folders.urls(); }
    [[nodiscard]] bool isIndexing() const { return m_isIndexing; }
    /// Share of the current folder's files that are done, from 0 to 1.
    [[nodiscard]] double indexingProgress() const { return m_indexingProgress; }
    /// Number of records after the last load or walk.
    [[nodiscard]] qsizetype totalFilesIndexed() const { return m_totalFilesIndexed; }
    /// Whether the start-up, a walk or a save is under way or waiting; settled() tells the end.
    [[nodiscard]] bool isBusy() const { return m_tasks > 0; }

    /// Lets the person choose a folder, and adds it.
    void addFolder();
    /// Adds a folder and walks it; one that is listed already is left as it is.
    void addFolderURL(const QUrl &folder);
    /// Removes a folder and the records of the files below it.
    void removeFolder(const QUrl &folder);
    /// Forgets all records and walks every folder again, unless local indexing is off.
    void reindexAll();
    /// Forgets all records, at once and on disk, and what was cached about files; then walks every
    /// folder again, unless local indexing is off.
    void clearIndexedData();
    /// Walks one folder and adds records for files that have none, unless local indexing is off.
    QCoro::Task<void> indexFolder(QUrl folder);

Q_SIGNALS:
    void indexedFilesChanged();
    void indexedFolderURLsChanged();
    void isIndexingChanged();
    void indexingProgressChanged();
    void totalFilesIndexedChanged();
    /// The start-up has read the folders and the index of earlier runs.
    void restored();
    void settled();

private:
    class Task;
    enum class Caches { kept, dropped };

    QCoro::Task<void> startUp();
    QCoro::Task<void> restoreIndex();
    QCoro::Task<void> walkAtStart();
    QCoro::Task<void> makeMissingVectors();
    QCoro::Task<void> pickFolder();
    QCoro::Task<void> saveBookmark(QString folder);
    QCoro::Task<void> removeBookmark(QString folder);
    QCoro::Task<void> saveRemoval(QString folder);
    QCoro::Task<void> reindex(IndexingOptions options, Caches caches);
    QCoro::Task<void> dropCaches();
    QCoro::Task<bool> walk(QString folder, IndexingOptions options);
    QCoro::Task<bool> saveIndex();

    void logUnsaved(const Outcome<Success> &outcome) const;
    /// Whether the start-up has restored the folders and the index; until then `change` waits.
    [[nodiscard]] bool isRestored(const std::function<void()> &change);
    [[nodiscard]] QCoro::Task<std::shared_ptr<IndexStore::Turn>>
    enter(std::optional<std::chrono::milliseconds> limit = std::nullopt);
    void setIndexedFiles(QList<IndexedFile> files);
    template <typename... Values>
    void freeInWorker(Values... values);
    void removeRecordsBelow(const QString &folder);
    void append(const QList<IndexedFile> &records);
    void setIsIndexing(bool isIndexing);
    void setIndexingProgress(double progress);
    void countFiles();

    Platform &m_platform;
    QThreadPool m_workers;
    std::stop_source m_stop;
    IndexStore m_store;
    IndexedFolders m_folders;
    QList<IndexedFile> m_indexedFiles;
    /// As the last walk read it; shared with the walk that is under way.
    std::shared_ptr<const MetadataIndex> m_metadata;
    bool m_isIndexing = false;
    double m_indexingProgress = 0;
    qsizetype m_totalFilesIndexed = 0;
    int m_tasks = 0;
    int m_reindexings = 0; ///< asked for so far
    bool m_isRestored = false;
    QList<std::function<void()>> m_waitingChanges; ///< asked for before that
};

} // namespace dugwise
