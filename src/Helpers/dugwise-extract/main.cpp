// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Reads documents of strangers for the program that started it: gets open files, gives back their
// texts. It opens nothing by itself, and whatever a document makes of it stays in its sandbox.
#include "Helpers/dugwise-extract/Document.h"
#include "Platform/ParserProtocol.h"
#include "Platform/Sandbox.h"

#include <iconv.h>
#include <poppler-global.h>
#include <poppler-version.h>
#include <sys/socket.h>
#include <sys/uio.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string>

namespace {

using namespace dugwise;
using namespace dugwise::ParserProtocol;

constexpr int kNotReady = 3;
const iconv_t kNoConversion = reinterpret_cast<iconv_t>(-1); // NOLINT(performance-no-int-to-ptr)

/// What Poppler opens while it reads: names of glyphs and encodings of East Asian texts.
constexpr const char *kPopplerData = "/usr/share/poppler";

struct Received
{
    Request request;
    FileDescriptor file;
};

/// The next request; absent when there will be none.
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

bool send(std::int32_t result, const poppler::ustring &text = {})
{
    const std::size_t length = std::min<std::size_t>(text.size(), kMostText);
    const Reply reply{result, static_cast<std::uint32_t>(length)};
    static_assert(sizeof(poppler::ustring::value_type) == sizeof(char16_t));
    return sendAll(&reply, sizeof reply) && sendAll(text.data(), length * sizeof(char16_t));
}

bool greet()
{
    return send(0,
                poppler::ustring::from_latin1("parser " + std::to_string(kParserVersion)
                                              + ", poppler " + poppler::version_string()));
}

bool sendPage(const std::optional<Document> &document, int page)
{
    const poppler::ustring text = document ? document->pageText(page) : poppler::ustring();
    return send(text.empty() ? -1 : 0, text);
}

void serve()
{
    std::optional<Document> document;
    bool isHeard = greet();
    while (isHeard) {
        std::optional<Received> received = receive();
        if (!received)
            return;
        switch (received->request.subject) {
        case Subject::document:
            document.emplace(std::move(received->file));
            isHeard = send(document->pageCount());
            break;
        case Subject::page:
            isHeard = sendPage(document, static_cast<int>(received->request.page));
            break;
        case Subject::close:
            document.reset();
            break;
        }
    }
}

} // namespace

int main()
{
    // Poppler converts every text with this. The C library loads it from a module, which is out of
    // reach in the sandbox, and keeps that as long as somebody has it open.
    if (::iconv_open("UTF-16", "UTF-8") == kNoConversion || !Sandbox::confine(kPopplerData))
        return kNotReady;
    poppler::set_debug_error_function([](const std::string &, void *) {}, nullptr);
    try {
        serve();
    } catch (...) { // out of memory, by most likelihood; the program takes the end for an answer
        ::_exit(1);
    }
    // Without the destructors of libraries, which may call what the sandbox forbids.
    ::_exit(0);
}
