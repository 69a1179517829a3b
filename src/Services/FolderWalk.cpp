// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/FolderWalk.h"

#include "Platform/Platform.h"
#include "Services/FileRecord.h"
#include "Services/RecordVectors.h"

#include <QCoroFuture>
#include <QtConcurrentRun>

#include <algorithm>

namespace dugwise {

namespace {

/// Files whose records one worker makes at a time; their appending takes well below a frame.
constexpr qsizetype kBatch = 32;

QSet<QString> pathsOf(const QList<IndexedFile> &files)
{
    QSet<QString> paths;
    paths.reserve(files.size());
    for (const IndexedFile &file : files)
        paths.insert(file->path);
    return paths;
}

/// What the desktop knows about files now; null where it keeps nothing.
std::shared_ptr<const MetadataIndex> readMetadata(const MetadataReader *reader,
                                                  std::shared_ptr<const MetadataIndex> previous,
                                                  const std::stop_token &stop)
{
    return reader ? reader->read(std::move(previous), stop) : nullptr;
}

} // namespace

FolderWalk::FolderWalk(const Platform &platform, QThreadPool &workers, std::stop_token stop)
    : m_platform(platform)
    , m_workers(workers)
    , m_stop(std::move(stop))
{}

QCoro::Task<bool> FolderWalk::begin(QString folder,
                                    IndexingOptions options,
                                    QList<IndexedFile> known,
                                    std::shared_ptr<const MetadataIndex> metadata)
{
    QFuture<std::optional<QList<ListedFile>>> listing =
        QtConcurrent::run(&m_workers, listIncluded, folder, options, m_stop);
    QFuture<QSet<QString>> gathering = QtConcurrent::run(&m_workers, pathsOf, std::move(known));
    const QFuture<std::shared_ptr<const MetadataIndex>> reading = QtConcurrent::run(
        &m_workers, readMetadata, m_platform.metadataReader.get(), std::move(metadata), m_stop);
    std::optional<QList<ListedFile>> listed = co_await listing;
    QSet<QString> knownPaths = co_await gathering;
    const std::shared_ptr<const MetadataIndex> read = co_await reading;
    // What the futures share with these would be copied at the first change.
    listing = {};
    gathering = {};
    m_knownPaths = std::move(knownPaths);
    m_metadata = read;
    const bool isListed = listed.has_value();
    if (listed)
        m_files = std::move(*listed);
    co_return isListed;
}

QCoro::Task<QList<IndexedFile>> FolderWalk::next()
{
    const auto ahead = 2 * static_cast<std::size_t>(m_workers.maxThreadCount());
    while (m_started < m_files.size() && m_batches.size() < ahead) {
        m_batches.push_back(buildRecords(m_files.mid(m_started, kBatch)));
        m_started += kBatch;
    }
    const QFuture<QList<IndexedFile>> batch = m_batches.front();
    m_batches.pop_front();
    const QList<IndexedFile> made = co_await batch;
    m_done = std::min(m_done + kBatch, m_files.size());
    QList<IndexedFile> records;
    for (const IndexedFile &record : made) {
        if (m_knownPaths.contains(record->path))
            continue;
        m_knownPaths.insert(record->path);
        records.append(record);
    }
    co_return records;
}

double FolderWalk::progress() const
{
    return static_cast<double>(m_done) / static_cast<double>(m_files.size());
}

/// Starts the making of records for those of `files` that have none.
QFuture<QList<IndexedFile>> FolderWalk::buildRecords(const QList<ListedFile> &files) const
{
    QList<ListedFile> missing;
    std::ranges::copy_if(files, std::back_inserter(missing), [this](const ListedFile &file) {
        return !m_knownPaths.contains(file.path());
    });
    const FileRecordSources sources{
        .spotlightService =
            SpotlightMetadataService(m_metadata, m_platform.metadataQueryCommand.get()),
        .pdfDocuments = m_platform.pdfDocuments.get(),
        .clock = m_platform.clock,
    };
    const SentenceEmbedding *const embedding = m_platform.sentenceEmbedding.get();
    const auto build = [missing, sources, embedding, stop = m_stop] {
        QList<IndexedFile> records;
        for (const ListedFile &file : missing) {
            if (stop.stop_requested())
                break;
            if (const auto record = createIndexedFile(file, sources, stop))
                records.append(*record);
        }
        return withVectors(records, embedding, stop);
    };
    return QtConcurrent::run(&m_workers, build);
}

} // namespace dugwise
