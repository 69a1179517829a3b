// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/NetworkGuard.h"

#include <QFileInfo>
#include <QHostAddress>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <netinet/in.h>
#include <poll.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace dugwise::test {

namespace {

constexpr std::array kFamilies{AF_UNIX, AF_INET, AF_INET6, AF_NETLINK};
/// With these flags, which nobody else has a use for together, the listener itself is handed over.
constexpr int kHandOver = MSG_NOSIGNAL | MSG_DONTROUTE | MSG_CONFIRM | MSG_MORE;
constexpr std::uint32_t kMostMessages = 1024; // of one sendmmsg(2)

/// An address as a call names it, in the memory of its process.
struct Name
{
    std::uint64_t at = 0;
    std::uint32_t length = 0;
};

bool addRules(scmp_filter_ctx filter)
{
    const auto ask = [&](int call, std::initializer_list<scmp_arg_cmp> where) {
        return ::seccomp_rule_add_array(filter,
                                        SCMP_ACT_NOTIFY,
                                        call,
                                        static_cast<unsigned>(where.size()),
                                        where.begin())
               == 0;
    };
    for (int family = 0; family < AF_MAX; ++family) {
        if (std::ranges::find(kFamilies, family) == kFamilies.end()
            && !ask(SCMP_SYS(socket), {SCMP_A0_32(SCMP_CMP_EQ, static_cast<unsigned>(family))}))
            return false;
    }
    return ask(SCMP_SYS(socket), {SCMP_A0_32(SCMP_CMP_GE, AF_MAX)}) && ask(SCMP_SYS(connect), {})
           && ask(SCMP_SYS(bind), {}) && ask(SCMP_SYS(sendto), {SCMP_A4(SCMP_CMP_NE, 0)})
           && ask(SCMP_SYS(sendmsg), {SCMP_A2_32(SCMP_CMP_NE, kHandOver)})
           && ask(SCMP_SYS(sendmmsg), {})
           && ::seccomp_rule_add(filter, SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(io_uring_setup), 0) == 0;
}

/// The filter in the form that the kernel takes; empty where it cannot be made.
std::vector<sock_filter> makeFilter()
{
    const std::unique_ptr<void, decltype(&::seccomp_release)> filter(::seccomp_init(SCMP_ACT_ALLOW),
                                                                     ::seccomp_release);
    const FileDescriptor file(::memfd_create("filter", MFD_CLOEXEC));
    if (!filter || !file
        || ::seccomp_attr_set(filter.get(), SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_KILL_PROCESS) != 0
        || !addRules(filter.get()) || ::seccomp_export_bpf(filter.get(), file.get()) != 0)
        return {};
    const auto size = static_cast<std::size_t>(::lseek(file.get(), 0, SEEK_END));
    std::vector<sock_filter> program(size / sizeof(sock_filter));
    if (::pread(file.get(), program.data(), size, 0) != static_cast<ssize_t>(size))
        return {};
    return program;
}

/// A message of one byte with room for a descriptor beside it; holds pointers to itself.
struct DescriptorMessage
{
    char byte = 0;
    iovec data{&byte, 1};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
    msghdr header{nullptr, 0, &data, 1, control.data(), control.size(), 0};

    DescriptorMessage() = default;
    Q_DISABLE_COPY_MOVE(DescriptorMessage)
};

/// Puts this process, which is about to become the program, under the filter; calls only what may
/// be called between fork and exec.
void confine(const std::vector<sock_filter> &filter, int socket)
{
    // The kernel does not change the instructions.
    const sock_fprog program{static_cast<unsigned short>(filter.size()),
                             const_cast<sock_filter *>(filter.data())};
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    const auto listener = static_cast<int>(::syscall(
        SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_NEW_LISTENER, &program));
    DescriptorMessage message;
    cmsghdr *control = CMSG_FIRSTHDR(&message.header);
    control->cmsg_level = SOL_SOCKET;
    control->cmsg_type = SCM_RIGHTS;
    control->cmsg_len = CMSG_LEN(sizeof listener);
    std::copy_n(reinterpret_cast<const char *>(&listener),
                sizeof listener,
                reinterpret_cast<char *>(CMSG_DATA(control)));
    if (listener < 0 || ::sendmsg(socket, &message.header, kHandOver) < 0)
        ::abort();
    ::close(listener);
}

/// Waits for the listener; null when the other end is shut.
FileDescriptor receiveListener(int socket)
{
    DescriptorMessage message;
    while (::recvmsg(socket, &message.header, MSG_CMSG_CLOEXEC) < 0) {
        if (errno != EINTR)
            return {};
    }
    int listener = -1;
    if (cmsghdr *control = CMSG_FIRSTHDR(&message.header))
        std::copy_n(
            CMSG_DATA(control), sizeof listener, reinterpret_cast<unsigned char *>(&listener));
    return FileDescriptor(listener);
}

/// Whether all of it could be read from the memory of another process.
bool readMemory(std::uint32_t process, std::uint64_t at, void *to, std::size_t size)
{
    const iovec local{to, size};
    const iovec remote{reinterpret_cast<void *>(at), size};
    return ::process_vm_readv(static_cast<pid_t>(process), &local, 1, &remote, 1, 0)
           == static_cast<ssize_t>(size);
}

/// The addresses that a call names; absent where its memory cannot be read.
std::optional<std::vector<Name>> namesOf(const seccomp_notif &call)
{
    const auto &arguments = call.data.args;
    // The kernel looks at the lower half of lengths and counts.
    const auto narrow = [](std::uint64_t number) { return static_cast<std::uint32_t>(number); };
    if (call.data.nr == SCMP_SYS(sendto))
        return {{Name{arguments[4], narrow(arguments[5])}}};
    if (call.data.nr != SCMP_SYS(sendmsg) && call.data.nr != SCMP_SYS(sendmmsg))
        return {{Name{arguments[1], narrow(arguments[2])}}};

    const bool isOne = call.data.nr == SCMP_SYS(sendmsg);
    const std::uint32_t count = isOne ? 1 : std::min(narrow(arguments[2]), kMostMessages);
    const std::size_t stride = isOne ? sizeof(msghdr) : sizeof(mmsghdr);
    std::vector<Name> names;
    for (std::uint32_t i = 0; i < count; ++i) {
        msghdr header = {}; // also what a mmsghdr begins with
        if (!readMemory(call.pid, arguments[1] + i * stride, &header, sizeof header))
            return std::nullopt;
        if (header.msg_name != nullptr && header.msg_namelen > 0)
            names.push_back({reinterpret_cast<std::uint64_t>(header.msg_name), header.msg_namelen});
    }
    return names;
}

/// What a call tries to reach.
struct Attempt
{
    QStringList offences;
    QStringList loopback;
};

void judge(int call, const sockaddr_storage &name, Attempt &attempt)
{
    const bool isConnecting = call == SCMP_SYS(connect);
    sockaddr_storage known = name;
    if (known.ss_family == AF_UNSPEC && !isConnecting) // connecting to it takes a connection back
        known.ss_family = AF_INET;                     // what the kernel takes it for
    if (known.ss_family != AF_INET && known.ss_family != AF_INET6)
        return;
    const QHostAddress address(reinterpret_cast<const sockaddr *>(&known));
    // The port stands at the same place in addresses of both families.
    const quint16 port = ntohs(reinterpret_cast<const sockaddr_in *>(&known)->sin_port);
    const bool isShort = known.ss_family == AF_INET;
    const QString text = (isShort ? u"%1:%2"_s : u"[%1]:%2"_s).arg(address.toString()).arg(port);
    const bool isBinding = call == SCMP_SYS(bind);
    if (!address.isLoopback())
        attempt.offences.append((isConnecting ? "connect to "_L1
                                 : isBinding  ? "bind to "_L1
                                              : "send to "_L1)
                                + text);
    else if (!isBinding)
        attempt.loopback.append(text);
}

Attempt attemptOf(const seccomp_notif &call)
{
    if (call.data.nr == SCMP_SYS(socket))
        return {{u"socket of family %1"_s.arg(static_cast<int>(call.data.args[0]))}, {}};
    const auto names = namesOf(call);
    if (!names)
        return {{u"unreadable message"_s}, {}};
    Attempt attempt;
    for (const Name &name : *names) {
        sockaddr_storage address = {};
        if (readMemory(
                call.pid, name.at, &address, std::min<std::size_t>(name.length, sizeof address)))
            judge(call.data.nr, address, attempt);
        else
            attempt.offences.append(u"unreadable address"_s);
    }
    return attempt;
}

QString programOf(std::uint32_t process)
{
    return QFileInfo(QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(process))).fileName();
}

} // namespace

NetworkGuard::NetworkGuard(QProcess &process)
{
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0)
        qFatal("no pair of sockets");
    m_ours = FileDescriptor(ends[0]);
    m_theirs = FileDescriptor(ends[1]);
    process.setChildProcessModifier([filter = makeFilter(), socket = m_theirs.get()] {
        confine(filter, socket); // the kernel refuses an empty filter
    });
    m_supervisor = std::jthread([this] { supervise(); });
}

NetworkGuard::~NetworkGuard()
{
    ::shutdown(m_theirs.get(), SHUT_RDWR); // ends the supervisor
}

QStringList NetworkGuard::offences() const
{
    const std::scoped_lock lock(m_mutex);
    return m_offences;
}

QStringList NetworkGuard::loopbackConnections() const
{
    const std::scoped_lock lock(m_mutex);
    return m_loopbackConnections;
}

void NetworkGuard::supervise()
{
    const FileDescriptor listener = receiveListener(m_ours.get());
    std::array<pollfd, 2> waits{{{listener.get(), POLLIN, 0}, {m_ours.get(), POLLIN, 0}}};
    while (listener) {
        if (::poll(waits.data(), waits.size(), -1) < 0)
            continue; // a signal
        if ((waits[0].revents & POLLIN) != 0)
            answer(listener.get());
        else
            return; // the last guarded process has ended, or the guard does
    }
}

void NetworkGuard::answer(int listener)
{
    seccomp_notif call = {};
    if (::ioctl(listener, SECCOMP_IOCTL_NOTIF_RECV, &call) != 0)
        return; // its process has ended
    const Attempt attempt = attemptOf(call);
    const QString program = programOf(call.pid);
    if (::ioctl(listener, SECCOMP_IOCTL_NOTIF_ID_VALID, &call.id) != 0)
        return; // so what was read may be another's
    {
        const std::scoped_lock lock(m_mutex);
        for (const QString &offence : attempt.offences)
            m_offences.append(program + ": "_L1 + offence);
        m_loopbackConnections.append(attempt.loopback);
    }
    seccomp_notif_resp response = {};
    response.id = call.id;
    if (attempt.offences.isEmpty())
        response.flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE;
    else
        response.error = -EACCES;
    ::ioctl(listener, SECCOMP_IOCTL_NOTIF_SEND, &response);
}

} // namespace dugwise::test
