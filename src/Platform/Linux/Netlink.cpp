// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Netlink.h"

#include <QByteArray>

#include <sys/socket.h>

#include <array>
#include <cerrno>

namespace dugwise::Netlink {

namespace {

constexpr std::size_t kMostBytes = std::size_t{32} * 1024; // the kernel fills no datagram beyond
constexpr int kMostDrained = 1000;

using Buffer = std::array<char, kMostBytes>;

/// One datagram; absent when none is there or it is larger than it may be. The kernel writes an
/// answer while it is asked, so that there is never one to wait for.
std::optional<QByteArrayView> receive(const FileDescriptor &socket, Buffer &buffer)
{
    const ssize_t size =
        ::recv(socket.get(), buffer.data(), buffer.size(), MSG_DONTWAIT | MSG_TRUNC);
    if (size < 0 || static_cast<std::size_t>(size) > buffer.size())
        return std::nullopt;
    return QByteArrayView(buffer.data(), size);
}

} // namespace

FileDescriptor open(quint32 groups)
{
    FileDescriptor socket(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE));
    sockaddr_nl address = {};
    address.nl_family = AF_NETLINK;
    address.nl_groups = groups;
    const auto *const generic = reinterpret_cast<const sockaddr *>(&address);
    if (!socket || ::bind(socket.get(), generic, sizeof(address)) != 0)
        return {};
    return socket;
}

bool drain(const FileDescriptor &socket)
{
    std::array<char, 1> byte = {}; // the rest of a datagram goes with its first byte
    for (int count = 0; count < kMostDrained; ++count) {
        const ssize_t size = ::recv(socket.get(), byte.data(), byte.size(), MSG_DONTWAIT);
        if (size < 0 && errno != ENOBUFS && errno != EINTR)
            return count > 0;
    }
    return true;
}

bool ask(
    const FileDescriptor &socket, quint16 type, quint16 flags, QByteArrayView body, const Use &use)
{
    (void)drain(socket); // what an answer that broke off has left
    nlmsghdr head = {};
    head.nlmsg_len = static_cast<quint32>(qsizetype{sizeof(head)} + body.size());
    head.nlmsg_type = type;
    head.nlmsg_flags = static_cast<quint16>(NLM_F_REQUEST | flags);
    QByteArray message = bytesOf(head).toByteArray();
    message += body;
    const auto size = static_cast<std::size_t>(message.size());
    if (::send(socket.get(), message.constData(), size, 0) != message.size())
        return false;

    Buffer buffer;
    enum class State { going, done, failed } state = State::going;
    while (state == State::going) {
        const std::optional<QByteArrayView> datagram = receive(socket, buffer);
        if (!datagram)
            return false;
        state = State::failed;
        forEachRecord(*datagram, &nlmsghdr::nlmsg_len, [&](const nlmsghdr &one, auto content) {
            if (one.nlmsg_type == NLMSG_ERROR) {
                state = State::failed;
                return;
            }
            const bool isMore = (one.nlmsg_flags & NLM_F_MULTI) != 0;
            state = isMore && one.nlmsg_type != NLMSG_DONE ? State::going : State::done;
            if (one.nlmsg_type >= NLMSG_MIN_TYPE)
                use(one, content);
        });
    }
    return state == State::done;
}

} // namespace dugwise::Netlink
