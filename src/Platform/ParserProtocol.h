// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

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
};

struct Request
{
    Subject subject = Subject::document;
    std::uint32_t page = 0; ///< counted from 0
};

struct Reply
{
    std::int32_t result = 0;  ///< negative: there is no such thing
    std::uint32_t length = 0; ///< UTF-16 code units of text that follow
};

/// Code units of a text; what is longer is cut.
constexpr std::uint32_t kMostText = 1U << 19U;

} // namespace dugwise::ParserProtocol
