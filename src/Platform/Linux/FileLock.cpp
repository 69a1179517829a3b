// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/FileLock.h"

#include <QDeadlineTimer>
#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <thread>

namespace dugwise {

FileLock::FileLock(const QString &path)
    : m_file(::open(
        QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR))
{
    lock();
}

FileLock FileLock::ofFolder(const QString &path, std::chrono::milliseconds patience)
{
    FileLock lock;
    lock.m_file = FileDescriptor(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const QDeadlineTimer deadline(patience);
    lock.lock();
    while (lock.m_state == State::heldByAnother && !deadline.hasExpired()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        lock.lock();
    }
    return lock;
}

void FileLock::lock()
{
    if (!m_file)
        return;
    if (::flock(m_file.get(), LOCK_EX | LOCK_NB) == 0)
        m_state = State::held;
    else if (errno == EWOULDBLOCK)
        m_state = State::heldByAnother;
}

} // namespace dugwise
