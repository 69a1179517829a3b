// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/ParserSocket.h"
#include "Helpers/dugwise-extract/MailMessage.h"
#include "Helpers/dugwise-extract/Service.h"
#include "Platform/Sandbox.h"

#include <gmime/gmime.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace dugwise {

using namespace ParserProtocol;

namespace {

struct Unmap
{
    std::size_t size = 0;
    void operator()(char *data) const { ::munmap(data, size); }
};
using Mapping = std::unique_ptr<char, Unmap>;

Mapping map(const FileDescriptor &file)
{
    struct stat status = {};
    if (::fstat(file.get(), &status) != 0 || status.st_size <= 0)
        return {};
    const auto size = static_cast<std::size_t>(status.st_size);
    void *const data = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.get(), 0);
    return data == MAP_FAILED ? Mapping() : Mapping(static_cast<char *>(data), Unmap{size});
}

/// Takes the next message off a file's content; empty at its end.
std::string_view takeMessage(std::string_view &content)
{
    MessageSize size = 0;
    if (content.size() < sizeof size)
        return {};
    std::memcpy(&size, content.data(), sizeof size);
    content.remove_prefix(sizeof size);
    const std::string_view message = content.substr(0, size);
    content.remove_prefix(message.size());
    return message;
}

bool send(const MailMessage &message)
{
    MessageReply reply{.date = message.date};
    std::string bytes(sizeof reply, '\0');
    for (std::size_t i = 0; i < kMessageTexts; ++i) {
        reply.sizes.at(i) = static_cast<std::uint32_t>(message.texts.at(i).size());
        bytes += message.texts.at(i);
    }
    std::memcpy(bytes.data(), &reply, sizeof reply);
    return ParserSocket::sendAll(bytes.data(), bytes.size());
}

bool sendMessages(const ParserSocket::Received &received)
{
    const Mapping file = map(received.file);
    std::string_view content(file.get(), file ? file.get_deleter().size : 0);
    bool isHeard = true;
    for (std::uint32_t i = 0; i < received.request.number && isHeard; ++i)
        isHeard = send(MailMessage::read(takeMessage(content)));
    return isHeard;
}

} // namespace

bool serveMail()
{
    MailMessage::makeReady();
    if (!Sandbox::confine(""))
        return false;
    bool isHeard = ParserSocket::greet("gmime " + std::to_string(gmime_major_version) + '.'
                                       + std::to_string(gmime_minor_version) + '.'
                                       + std::to_string(gmime_micro_version));
    while (isHeard) {
        const std::optional<ParserSocket::Received> received = ParserSocket::receive();
        if (!received)
            break;
        isHeard = received->request.subject == Subject::messages && sendMessages(*received);
    }
    return true;
}

} // namespace dugwise
