// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

/// What the program and its sandboxed parser say to each other, over a pair of stream sockets. The
/// parser greets with a reply whose text tells its version; then each request but the last kind has
/// one reply. Both run on one machine and are built together, so numbers go as they are in memory.
namespace dugwise::ParserProtocol {

/// Told in the greeting beside the library's version. To be raised when the parser can read what it
/// could not before: what it failed at is then tried again.
constexpr int kParserVersion = 1;

/// Where the parser finds its socket.
constexpr int kSocket = 3;

enum class Subject : std::uint32_t {
    document, ///< the request carries an open file; the reply's result is the number of pages
    page,     ///< its text
    close,    ///< lets go of the document; has no reply
    messages, ///< the request carries an open file of them; each has a MessageReply, in their order
};

struct Request
{
    Subject subject = Subject::document;
    std::uint32_t number = 0; ///< of the page, counted from 0, or of the messages
};

struct Reply
{
    std::int32_t result = 0;  ///< negative: there is no such thing
    std::uint32_t length = 0; ///< UTF-16 code units of text that follow
};

/// Code units of a text; what is longer is cut.
constexpr std::uint32_t kMostText = 1U << 19U;

/// A file of messages is a sequence of these, each before the message's bytes.
using MessageSize = std::uint32_t;

/// What is told of a message, as UTF-8 without line feeds but between the entries of a list.
enum MessageText : std::size_t {
    subject,
    authors,    ///< a line each: the display name, or the address where there is none
    addresses,  ///< theirs, a line each
    identifier, ///< its Message-ID
    body,       ///< the text
    kMessageTexts,
};

struct MessageReply
{
    static constexpr std::int64_t kNoDate = std::numeric_limits<std::int64_t>::min();
    std::int64_t date = kNoDate;                      ///< when it was sent, in seconds since 1970
    std::array<std::uint32_t, kMessageTexts> sizes{}; ///< bytes of the texts that follow
};

/// Bytes of a message's body, and of each of its other texts; what is longer is cut.
constexpr std::uint32_t kMostBody = 1U << 16U;
constexpr std::uint32_t kMostMessageText = 4096;

} // namespace dugwise::ParserProtocol
