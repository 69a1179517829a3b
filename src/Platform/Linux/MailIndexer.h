// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/StandardFolders.h"

#include <QString>

#include <sys/types.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <stop_token>
#include <thread>

namespace dugwise {

/// Keeps the index of mail up to date in a thread of its own, one update at a time, which gives
/// way to all others. Of several processes one writes. Belongs to a thread with an event loop.
class MailIndexer
{
public:
    /// `program` is the path of dugwise-extract.
    MailIndexer(StandardFolders folders, QString program);
    Q_DISABLE_COPY_MOVE(MailIndexer)
    /// Ends an update that is under way; the next one goes on where it was.
    ~MailIndexer() = default;

    /// Starts an update; while one is under way, one more that follows it, for what has changed
    /// since it began. The future is ready when all that is new has been read, or will not be: when
    /// another process writes, or something fails. It is that of the update under way, or that of
    /// the next one where the former is that far. One that somebody waits for (`isAwaited`) runs
    /// like any other thread until it is that far, or for kHaste.
    std::shared_future<void> update(bool isAwaited);

    static constexpr std::chrono::milliseconds kHaste{2000};

private:
    void start(bool isAwaited);
    void run(const std::stop_token &stop, std::stop_source haste, std::promise<void> current);
    [[nodiscard]] bool pass(const std::stop_token &stop,
                            const std::stop_token &quit,
                            const std::function<void()> &onCurrent) const;

    StandardFolders m_folders;
    QString m_program;
    std::shared_future<void> m_before; ///< of the update before the latest one
    std::shared_future<void> m_latest;
    std::atomic<bool> m_isWaiting = false; ///< the latest one has not begun
    std::jthread m_thread;                 ///< gone before all it uses; has the one before
};

} // namespace dugwise
