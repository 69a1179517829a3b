// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FileDescriptor.h"

#include <QProcess>
#include <QStringList>

#include <mutex>
#include <thread>

namespace dugwise::test {

/// Runs a program, and whatever it starts, so that nothing it sends leaves this machine, and tells
/// what it tried. Sockets of the families AF_UNIX, AF_INET, AF_INET6 and AF_NETLINK may be made;
/// the internet ones may bind, connect and send to loopback addresses only. Anything else fails
/// with EACCES in the program and is an offence. There is no io_uring, which goes past filters.
///
/// A filter of system calls asks a thread of this process about each call that names an address
/// (seccomp_unotify(2)). It looks for faults, not for malice: a program could change the address
/// after it was looked at.
class NetworkGuard
{
public:
    /// Guards the program that `process` starts next, as long as this lives; afterwards each call
    /// that would have been looked at fails with ENOSYS. Where it cannot be guarded,
    /// the program does not run: the process crashes.
    explicit NetworkGuard(QProcess &process);
    Q_DISABLE_COPY_MOVE(NetworkGuard)
    ~NetworkGuard();

    /// In the order of the calls, as "dugwise: connect to 192.0.2.1:80".
    [[nodiscard]] QStringList offences() const;
    /// Where on this machine was connected or sent to, in the order of the calls, whether or not
    /// somebody answered: "127.0.0.1:8080", "[::1]:8080".
    [[nodiscard]] QStringList loopbackConnections() const;

private:
    void supervise();
    void answer(int listener);

    FileDescriptor m_ours; ///< the ends over which the program hands us its listener
    FileDescriptor m_theirs;
    mutable std::mutex m_mutex;
    QStringList m_offences;
    QStringList m_loopbackConnections;
    std::jthread m_supervisor;
};

} // namespace dugwise::test
