// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"
#include "Services/IndexingOptions.h"

#include <QCoroTask>
#include <QFuture>
#include <QList>
#include <QSet>
#include <QThreadPool>

#include <deque>
#include <memory>
#include <stop_token>

namespace dugwise {

class MetadataIndex;
struct Platform;

/// One walk of a folder: lists its files, reads what the desktop knows about files, and has the
/// records made by workers, a few batches ahead. Used on the UI thread, where it stays until what
/// was awaited of it has come.
class FolderWalk
{
public:
    /// `platform` and `workers` are there for as long as something is asked of the walk.
    FolderWalk(const Platform &platform, QThreadPool &workers, std::stop_token stop);
    Q_DISABLE_COPY_MOVE(FolderWalk)
    ~FolderWalk() = default;

    /// Lists the folder; false when that is not possible. The files of `known` get no new records;
    /// `metadata` is what was read at the walk before, if any.
    [[nodiscard]] QCoro::Task<bool> begin(QString folder,
                                          IndexingOptions options,
                                          QList<IndexedFile> known,
                                          std::shared_ptr<const MetadataIndex> metadata);
    /// What the desktop knows about files, as read at the beginning.
    [[nodiscard]] std::shared_ptr<const MetadataIndex> metadata() const { return m_metadata; }
    [[nodiscard]] bool isAtEnd() const { return m_done >= m_files.size(); }
    /// The records of the next files, in listing order.
    [[nodiscard]] QCoro::Task<QList<IndexedFile>> next();
    /// Share of the files that are done, from 0 to 1; there is at least one.
    [[nodiscard]] double progress() const;

private:
    [[nodiscard]] QFuture<QList<IndexedFile>> buildRecords(const QList<ListedFile> &files) const;

    const Platform &m_platform;
    QThreadPool &m_workers;
    std::stop_token m_stop;
    QList<ListedFile> m_files;
    QSet<QString> m_knownPaths;
    std::shared_ptr<const MetadataIndex> m_metadata; ///< shared with the workers that look into it
    std::deque<QFuture<QList<IndexedFile>>> m_batches;
    qsizetype m_started = 0;
    qsizetype m_done = 0;
};

} // namespace dugwise
