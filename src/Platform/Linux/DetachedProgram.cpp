// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DetachedProgram.h"

#include "Platform/FileDescriptor.h"

#include <QFile>
#include <QSocketNotifier>

#include <fcntl.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <memory>

namespace dugwise {

namespace {

/// The settings of a program to be started.
class SpawnSettings
{
public:
    SpawnSettings()
    {
        sigset_t none = {};
        sigset_t brokenPipe = {};
        ::sigemptyset(&none);
        ::sigemptyset(&brokenPipe);
        ::sigaddset(&brokenPipe, SIGPIPE);
        ::posix_spawnattr_init(&m_attributes);
        ::posix_spawnattr_setsigmask(&m_attributes, &none);
        ::posix_spawnattr_setsigdefault(&m_attributes, &brokenPipe);
        ::posix_spawnattr_setflags(
            &m_attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        ::posix_spawn_file_actions_init(&m_actions);
        for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::posix_spawn_file_actions_addopen(&m_actions, descriptor, "/dev/null", O_RDWR, 0);
    }
    Q_DISABLE_COPY_MOVE(SpawnSettings)
    ~SpawnSettings()
    {
        ::posix_spawn_file_actions_destroy(&m_actions);
        ::posix_spawnattr_destroy(&m_attributes);
    }

    [[nodiscard]] const posix_spawnattr_t *attributes() const { return &m_attributes; }
    [[nodiscard]] const posix_spawn_file_actions_t *actions() const { return &m_actions; }

private:
    posix_spawnattr_t m_attributes = {};
    posix_spawn_file_actions_t m_actions = {};
};

/// Takes notice of a child's end, which the system keeps for us until then (pidfd_open(2)).
void reapAtEnd(pid_t child, QObject *keeper)
{
    const auto descriptor = static_cast<int>(::syscall(SYS_pidfd_open, child, 0));
    if (descriptor < 0)
        return;
    const auto ended = std::make_shared<FileDescriptor>(descriptor);
    auto *const notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, keeper);
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier, child, ended] {
        notifier->setEnabled(false);
        ::waitpid(child, nullptr, WNOHANG);
        notifier->deleteLater();
    });
}

} // namespace

bool startDetached(const QString &program, const QString &argument, QObject *keeper)
{
    QByteArray path = QFile::encodeName(program);
    QByteArray word = QFile::encodeName(argument);
    const std::array<char *, 3> arguments{path.data(), word.data(), nullptr};
    const SpawnSettings settings;
    pid_t child = 0;
    const int error = ::posix_spawn(&child,
                                    path.constData(),
                                    settings.actions(),
                                    settings.attributes(),
                                    arguments.data(),
                                    environ);
    if (error == 0)
        reapAtEnd(child, keeper);
    return error == 0;
}

} // namespace dugwise
