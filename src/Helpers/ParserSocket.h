// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FileDescriptor.h"
#include "Platform/ParserProtocol.h"

#include <cstddef>
#include <optional>
#include <string_view>

/// The parsers' end of the socket to the program that started them. Free of Qt.
namespace dugwise::ParserSocket {

struct Received
{
    ParserProtocol::Request request;
    FileDescriptor file; ///< that came with it, if any
};

/// Waits for the next request; absent when there will be none.
[[nodiscard]] std::optional<Received> receive();

/// Answers; what is too long of the text is cut. False when nobody listens any more.
[[nodiscard]] bool send(std::int32_t result, std::u16string_view text = {});

/// The same of raw bytes.
[[nodiscard]] bool sendAll(const void *data, std::size_t size);

/// The greeting: `library` is what texts are read with, and its version, in ASCII.
[[nodiscard]] bool greet(std::string_view library);

} // namespace dugwise::ParserSocket
