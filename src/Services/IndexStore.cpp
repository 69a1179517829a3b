// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/IndexStore.h"

#include "Platform/FileAttributes.h"
#include "Platform/StandardFolders.h"
#include "Services/IndexFile.h"
#include "Services/VectorFile.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QTimer>
#include <QtConcurrentRun>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace dugwise {

namespace {

constexpr auto kLockRetryInterval = 50ms;

QFuture<void> after(std::chrono::milliseconds time)
{
    // Shared with the timer that settles it.
    const auto promise = std::make_shared<QPromise<void>>();
    promise->start();
    QTimer::singleShot(time, [promise] { promise->finish(); });
    return promise->future();
}

using Vectors = IndexStore::Vectors;

std::optional<QList<IndexedFile>> loadIndex(const QString &path,
                                            const std::optional<Vectors> &vectors)
{
    std::optional<QList<IndexedFile>> files = IndexFile::load(path);
    if (!files || !vectors)
        return files;
    return VectorFile::attach(*files, vectors->path, vectors->version);
}

void saveVectorsOf(const QList<IndexedFile> &files, const std::optional<Vectors> &vectors)
{
    if (vectors)
        VectorFile::save(files, vectors->path, vectors->version);
}

Outcome<Success> saveIndex(const QString &path,
                           const std::optional<Vectors> &vectors,
                           const QList<IndexedFile> &files)
{
    Outcome<Success> outcome = IndexFile::save(path, files);
    if (outcome)
        saveVectorsOf(files, vectors);
    return outcome;
}

Outcome<Success> clearIndex(const QString &path, const std::optional<Vectors> &vectors)
{
    if (vectors)
        QFile::remove(vectors->path);
    return IndexFile::save(path, {});
}

} // namespace

IndexStore::IndexStore(const QString &folder,
                       const QString &fileName,
                       std::optional<Vectors> vectors,
                       QThreadPool &workers)
    : m_state(std::make_shared<State>(State{.folder = folder,
                                            .path = folder + u'/' + fileName,
                                            .lockPath = folder + u'/' + fileName + ".lock"_L1,
                                            .vectors = std::move(vectors),
                                            .workers = &workers}))
{}

std::optional<IndexStore::Version> IndexStore::versionOnDisk(const QString &path)
{
    const auto attributes = fileAttributes(path);
    if (!attributes)
        return std::nullopt;
    return Version{attributes->inode, attributes->size, attributes->modifiedDate};
}

QCoro::Task<std::optional<QList<IndexedFile>>> IndexStore::load()
{
    return load(m_state);
}

QCoro::Task<std::shared_ptr<IndexStore::Turn>>
IndexStore::enter(std::optional<std::chrono::milliseconds> limit)
{
    return enter(m_state, limit);
}

QCoro::Task<Outcome<Success>> IndexStore::save(QList<IndexedFile> files)
{
    return save(m_state, std::move(files));
}

QCoro::Task<void> IndexStore::saveVectors(QList<IndexedFile> files)
{
    return saveVectors(m_state, std::move(files));
}

QCoro::Task<Outcome<Success>> IndexStore::clear()
{
    return clear(m_state);
}

QCoro::Task<std::optional<QList<IndexedFile>>> IndexStore::load(std::shared_ptr<State> state)
{
    if (!state->workers)
        co_return std::nullopt;
    state->version = versionOnDisk(state->path);
    const QFuture<std::optional<QList<IndexedFile>>> loading =
        QtConcurrent::run(state->workers.data(), loadIndex, state->path, state->vectors);
    const std::optional<QList<IndexedFile>> files = co_await loading;
    co_return files;
}

QCoro::Task<std::shared_ptr<IndexStore::Turn>>
IndexStore::enter(std::shared_ptr<State> state, std::optional<std::chrono::milliseconds> limit)
{
    const auto turn = std::make_shared<Turn>();
    turn->pass = co_await state->turnstile.enter();
    makePrivateFolder(state->folder);
    turn->lock = FileLock(state->lockPath);
    const QDeadlineTimer deadline =
        limit ? QDeadlineTimer(*limit) : QDeadlineTimer(QDeadlineTimer::Forever);
    while (turn->lock.state() == FileLock::State::heldByAnother && !deadline.hasExpired()) {
        const QFuture<void> pause = after(kLockRetryInterval);
        co_await pause;
        turn->lock = FileLock(state->lockPath);
    }
    if (state->version != versionOnDisk(state->path))
        turn->changedIndex = co_await load(state);
    co_return turn;
}

QCoro::Task<Outcome<Success>> IndexStore::save(std::shared_ptr<State> state,
                                               QList<IndexedFile> files)
{
    if (!state->workers)
        co_return Failure{u"the program is ending"_s};
    const QFuture<Outcome<Success>> saving =
        QtConcurrent::run(state->workers.data(), saveIndex, state->path, state->vectors, files);
    const Outcome<Success> outcome = co_await saving;
    state->version = versionOnDisk(state->path);
    co_return outcome;
}

QCoro::Task<Outcome<Success>> IndexStore::clear(std::shared_ptr<State> state)
{
    if (!state->workers)
        co_return Failure{u"the program is ending"_s};
    const QFuture<Outcome<Success>> clearing =
        QtConcurrent::run(state->workers.data(), clearIndex, state->path, state->vectors);
    const Outcome<Success> outcome = co_await clearing;
    state->version = versionOnDisk(state->path);
    co_return outcome;
}

QCoro::Task<void> IndexStore::saveVectors(std::shared_ptr<State> state, QList<IndexedFile> files)
{
    if (!state->workers)
        co_return;
    const QFuture<void> saving =
        QtConcurrent::run(state->workers.data(), saveVectorsOf, files, state->vectors);
    co_await saving;
}

} // namespace dugwise
