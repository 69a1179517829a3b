// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"
#include "Platform/FileLock.h"
#include "Utilities/Outcome.h"
#include "Utilities/Turnstile.h"

#include <QCoroTask>
#include <QList>
#include <QPointer>
#include <QThreadPool>

#include <chrono>
#include <memory>
#include <optional>

namespace dugwise {

/// Keeps the index file, among all processes that use it: whoever changes the index first enters,
/// which waits for every other change here and in other processes, and reads the file again if
/// one of those wrote it. Its work runs in the given workers, its coroutines on the UI thread.
class IndexStore
{
public:
    /// Held while the index is being changed and saved.
    struct Turn
    {
        std::shared_ptr<Turnstile::Pass> pass;
        FileLock lock;
        /// The index as another process has left it, where one has written it since the last load
        /// or save here.
        std::optional<QList<IndexedFile>> changedIndex;
    };

    /// Where the records' vectors are kept, and for which version of the embedding.
    struct Vectors
    {
        QString path;
        quint64 version = 0;
    };

    /// Without `vectors`, records come without theirs, and none are kept.
    IndexStore(const QString &folder,
               const QString &fileName,
               std::optional<Vectors> vectors,
               QThreadPool &workers);

    [[nodiscard]] QCoro::Task<std::optional<QList<IndexedFile>>> load();
    // Shared, since it cannot be copied and passes through several coroutines.
    /// With a limit, gives up waiting for other processes after that time: then the turn's lock is
    /// not held, and nothing may be saved.
    [[nodiscard]] QCoro::Task<std::shared_ptr<Turn>>
    enter(std::optional<std::chrono::milliseconds> limit = std::nullopt);
    [[nodiscard]] QCoro::Task<Outcome<Success>> save(QList<IndexedFile> files);
    /// Keeps the vectors alone, of an index that is saved already.
    [[nodiscard]] QCoro::Task<void> saveVectors(QList<IndexedFile> files);
    /// Saves an index of nothing, and removes the vectors.
    [[nodiscard]] QCoro::Task<Outcome<Success>> clear();

private:
    /// What tells one written file from the next.
    struct Version
    {
        quint64 inode = 0;
        qint64 size = 0;
        Instant modifiedDate;

        bool operator==(const Version &) const = default;
    };
    struct State
    {
        QString folder;
        QString path;
        QString lockPath;
        std::optional<Vectors> vectors;
        QPointer<QThreadPool> workers; ///< gone with the store
        Turnstile turnstile{};
        std::optional<Version> version{}; ///< the file as last loaded or saved here
    };

    static std::optional<Version> versionOnDisk(const QString &path);
    static QCoro::Task<std::optional<QList<IndexedFile>>> load(std::shared_ptr<State> state);
    static QCoro::Task<std::shared_ptr<Turn>> enter(std::shared_ptr<State> state,
                                                    std::optional<std::chrono::milliseconds> limit);
    static QCoro::Task<Outcome<Success>> save(std::shared_ptr<State> state,
                                              QList<IndexedFile> files);
    static QCoro::Task<Outcome<Success>> clear(std::shared_ptr<State> state);
    static QCoro::Task<void> saveVectors(std::shared_ptr<State> state, QList<IndexedFile> files);

    // Shared with the tasks under way, which may outlive the store.
    std::shared_ptr<State> m_state;
};

} // namespace dugwise
