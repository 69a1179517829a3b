// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/ParserSocket.h"

#include <sys/socket.h>
#include <sys/uio.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

namespace dugwise::ParserSocket {

using namespace ParserProtocol;

std::optional<Received> receive()
{
    Received received;
    iovec part{&received.request, sizeof received.request};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    if (::recvmsg(kSocket, &message, MSG_CMSG_CLOEXEC | MSG_WAITALL)
        != static_cast<ssize_t>(sizeof received.request))
        return std::nullopt;
    const cmsghdr *const header = CMSG_FIRSTHDR(&message);
    if (header && header->cmsg_level == SOL_SOCKET && header->cmsg_type == SCM_RIGHTS) {
        int descriptor = -1;
        std::memcpy(&descriptor, CMSG_DATA(header), sizeof descriptor);
        received.file = FileDescriptor(descriptor);
    }
    return received;
}

bool sendAll(const void *data, std::size_t size)
{
    const char *from = static_cast<const char *>(data);
    while (size > 0) {
        const ssize_t sent = ::send(kSocket, from, size, MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        from += sent;
        size -= static_cast<std::size_t>(sent);
    }
    return true;
}

bool send(std::int32_t result, std::u16string_view text)
{
    const std::size_t length = std::min<std::size_t>(text.size(), kMostText);
    const Reply reply{result, static_cast<std::uint32_t>(length)};
    return sendAll(&reply, sizeof reply) && sendAll(text.data(), length * sizeof(char16_t));
}

bool greet(std::string_view library)
{
    const std::string ascii =
        "parser " + std::to_string(kParserVersion) + ", " + std::string(library);
    return send(0, std::u16string(ascii.begin(), ascii.end()));
}

} // namespace dugwise::ParserSocket
