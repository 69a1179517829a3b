// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/SessionBusProbe.h"

#include <QByteArray>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cstring>
#include <optional>
#include <string_view>

namespace dugwise {

namespace {

/// Asks for the ways to log in, after the byte that every client begins with (D-Bus specification,
/// "Authentication protocol"). Any bus answers with a line.
constexpr std::string_view kGreeting("\0AUTH\r\n", 7);

/// Bytes of the socket's name, an abstract one after a NUL; absent when there is none. The address
/// is a list of which the first entry counts here, as in "unix:path=/run/user/1000/bus,guid=1;...".
std::optional<QByteArray> socketName()
{
    const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    if (address.isEmpty()) {
        const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
        return runtime.isEmpty() ? std::nullopt : std::optional(runtime + "/bus");
    }
    const QByteArray first = address.split(';').constFirst();
    if (!first.startsWith("unix:"))
        return std::nullopt;
    for (const QByteArray &part : first.mid(5).split(',')) {
        if (part.startsWith("path="))
            return QByteArray::fromPercentEncoding(part.mid(5));
        if (part.startsWith("abstract="))
            return '\0' + QByteArray::fromPercentEncoding(part.mid(9));
    }
    return std::nullopt;
}

/// A socket on which the greeting has been sent; empty when nobody listens.
FileDescriptor greeted(const QByteArray &name)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (name.isEmpty() || static_cast<std::size_t>(name.size()) >= sizeof(address.sun_path))
        return {};
    std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
    const std::size_t length = offsetof(sockaddr_un, sun_path)
                               + static_cast<std::size_t>(name.size())
                               + (name.startsWith('\0') ? 0 : 1);
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const auto *const generic = reinterpret_cast<const sockaddr *>(&address);
    if (!socket || ::connect(socket.get(), generic, static_cast<socklen_t>(length)) != 0
        || ::send(socket.get(), kGreeting.data(), kGreeting.size(), MSG_NOSIGNAL) < 0)
        return {};
    return socket;
}

} // namespace

bool sessionBusAnswers(const QDeadlineTimer &deadline)
{
    const std::optional<QByteArray> name = socketName();
    const FileDescriptor socket = name ? greeted(*name) : FileDescriptor();
    pollfd waiting{.fd = socket.get(), .events = POLLIN};
    std::array<char, 1> byte = {};
    return socket && ::poll(&waiting, 1, static_cast<int>(deadline.remainingTime())) > 0
           && ::recv(socket.get(), byte.data(), byte.size(), 0) > 0;
}

void SessionBusProbe::start(std::function<void()> whenAnswered)
{
    cancel();
    const std::optional<QByteArray> name = socketName();
    if (name)
        m_socket = greeted(*name);
    if (!m_socket)
        return;
    m_answer = std::make_unique<QSocketNotifier>(m_socket.get(), QSocketNotifier::Read);
    connect(m_answer.get(),
            &QSocketNotifier::activated,
            this,
            [this, handler = std::move(whenAnswered)] {
                std::array<char, 1> byte = {};
                const bool isAnswer = ::recv(m_socket.get(), byte.data(), byte.size(), 0) > 0;
                m_answer->setEnabled(false);
                m_socket = FileDescriptor();
                if (isAnswer)
                    handler();
            });
}

void SessionBusProbe::cancel()
{
    m_answer.reset();
    m_socket = FileDescriptor();
}

} // namespace dugwise
