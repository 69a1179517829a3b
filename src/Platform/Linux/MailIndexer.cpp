// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MailIndexer.h"

#include "Platform/FileLock.h"
#include "Platform/Linux/MailIndex.h"
#include "Platform/Linux/MailIndexWriter.h"
#include "Platform/Linux/MailStores.h"
#include "Platform/Linux/MailUpdate.h"
#include "Platform/MailParser.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTimer>

#include <sys/resource.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr int kLowest = 19; // niceness

/// Has this thread, and what it starts, give way to all others. It is not made an idle one: nobody
/// but the administrator may take that back, and on a busy machine it would hardly come to its end.
void giveWay()
{
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), kLowest);
}

bool isReady(const std::shared_future<void> &future)
{
    return !future.valid() || future.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

} // namespace

MailIndexer::MailIndexer(StandardFolders folders, QString program)
    : m_folders(std::move(folders))
    , m_program(std::move(program))
{}

std::shared_future<void> MailIndexer::update(bool isAwaited)
{
    if (!m_isWaiting)
        start(isAwaited);
    return isReady(m_before) ? m_latest : m_before;
}

/// Starts an update that waits for the end of the one before.
void MailIndexer::start(bool isAwaited)
{
    std::promise<void> current;
    m_before = std::exchange(m_latest, current.get_future().share());
    std::stop_source haste;
    if (isAwaited)
        QTimer::singleShot(kHaste, qApp, [haste]() mutable { haste.request_stop(); });
    else
        haste.request_stop();
    m_isWaiting = true;
    m_thread = std::jthread(
        [this](const std::stop_token &stop,
               std::jthread before,
               std::stop_source hasteOver,
               std::promise<void> done) {
            const std::stop_callback endBefore(stop, [&before] { before.request_stop(); });
            if (before.joinable())
                before.join();
            m_isWaiting = false;
            run(stop, std::move(hasteOver), std::move(done));
        },
        std::move(m_thread),
        std::move(haste),
        std::move(current));
}

void MailIndexer::run(const std::stop_token &stop,
                      std::stop_source haste,
                      std::promise<void> current)
{
    const std::stop_callback endHaste(stop, [&haste] { haste.request_stop(); });
    bool isCurrent = false;
    const auto onCurrent = [&] {
        if (!std::exchange(isCurrent, true))
            current.set_value();
        giveWay();
    };
    const bool isDone = !haste.stop_requested() && pass(haste.get_token(), stop, onCurrent);
    giveWay();
    if (!isDone && !stop.stop_requested()) [[maybe_unused]]
        const bool isWhole = pass(stop, stop, onCurrent);
    if (!isCurrent)
        current.set_value();
}

/// False when it was stopped; what has been read is written then, unless it is to `quit`.
bool MailIndexer::pass(const std::stop_token &stop,
                       const std::stop_token &quit,
                       const std::function<void()> &onCurrent) const
{
    QList<MailFolder> folders;
    for (const MailStore &store : mailStores(m_folders))
        folders += mailFolders(store);
    if (folders.isEmpty() && !QFileInfo::exists(MailIndex::path(m_folders.cache)))
        return true;
    makePrivateFolder(m_folders.cache);
    const FileLock lock(m_folders.cache + "/mail.lock"_L1);
    if (lock.state() != FileLock::State::held)
        return true;
    MailParser parser(m_program);
    // A damaged index is made anew, once.
    for (int attempt = 0; attempt < 2 && !stop.stop_requested(); ++attempt) {
        MailIndexWriter index(m_folders.cache, quit);
        MailUpdate(index, parser, stop).run(folders, onCurrent);
        if (!index.isDamaged())
            break;
        index.markDamaged();
    }
    return !stop.stop_requested();
}

} // namespace dugwise
