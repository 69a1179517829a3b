// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SingleWindow.h"

#include "Platform/StandardFolders.h"
#include "Utilities/StableHash.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QThread>

#include <sys/un.h>

#include <string_view>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr unsigned long kPause = 50; // ms between two tries

int remaining(const QDeadlineTimer &deadline)
{
    return static_cast<int>(deadline.remainingTime());
}

/// Whether the window that listens has taken the message.
bool handOver(const QString &socketPath, const QByteArray &line, const QDeadlineTimer &deadline)
{
    QLocalSocket socket;
    socket.connectToServer(socketPath);
    if (!socket.waitForConnected(remaining(deadline)))
        return false;
    socket.write(line);
    while (!socket.canReadLine()) {
        if (!socket.waitForReadyRead(remaining(deadline)))
            return false;
    }
    return true;
}

/// Tells the displays of one person apart.
std::uint64_t displayHash()
{
    const QByteArray names = qgetenv("WAYLAND_DISPLAY") + '\n' + qgetenv("DISPLAY");
    return fnv1a({names.constData(), static_cast<std::size_t>(names.size())});
}

bool fitsSocket(const QString &path)
{
    return QFile::encodeName(path).size() < qsizetype{sizeof(sockaddr_un::sun_path)};
}

} // namespace

SingleWindow::SingleWindow(const QString &socketPath)
    : m_socketPath(socketPath)
{}

SingleWindow::Turn SingleWindow::take(const WindowMessage &message,
                                      std::chrono::milliseconds patience)
{
    if (m_socketPath.isEmpty())
        return Turn::ours;
    const QByteArray line = message.toLine();
    const QDeadlineTimer deadline(patience);
    // Whoever holds the lock may still be starting, or may end meanwhile.
    for (;;) {
        m_lock = FileLock(m_socketPath + ".lock"_L1);
        if (m_lock.state() != FileLock::State::heldByAnother)
            return Turn::ours;
        if (handOver(m_socketPath, line, deadline))
            return Turn::handedOver;
        if (deadline.hasExpired())
            return Turn::unanswered;
        QThread::msleep(kPause);
    }
}

QString SingleWindow::socketPath() const
{
    return m_lock.state() == FileLock::State::held ? m_socketPath : QString();
}

QString windowSocketPath(const QString &cache)
{
    const QString name = u"/window-"_s + QString::number(displayHash(), 16);
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    QStringList folders{cache};
    if (runtime.startsWith(u'/') && QFileInfo(runtime).isDir())
        folders.prepend(runtime + "/Dugwise"_L1);
    for (const QString &folder : folders) {
        if (!fitsSocket(folder + name))
            continue;
        makePrivateFolder(folder);
        return folder + name;
    }
    return {};
}

} // namespace dugwise
