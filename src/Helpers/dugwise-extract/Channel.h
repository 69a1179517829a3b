// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FileDescriptor.h"
#include "Platform/ParserProtocol.h"

#include <cstddef>
#include <optional>
#include <string_view>

/// The parser's end of its one socket.
namespace dugwise::Channel {

struct Received
{
    ParserProtocol::Request request;
    FileDescriptor file;
};

/// The next request; absent when there will be none.
[[nodiscard]] std::optional<Received> receive();

/// False when nobody listens any more.
[[nodiscard]] bool sendAll(const void *data, std::size_t size);

/// The greeting: `library` is what texts are read with, and its version, in ASCII.
[[nodiscard]] bool greet(std::string_view library);

} // namespace dugwise::Channel
