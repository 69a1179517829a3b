// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/ParserProtocol.h"

#include <array>
#include <string>
#include <string_view>

namespace dugwise {

/// What is told of one message in the form of RFC 5322, with the parts of MIME. Whatever is missing
/// or damaged is left out.
struct MailMessage
{
    std::int64_t date = ParserProtocol::MessageReply::kNoDate; ///< seconds since 1970
    std::array<std::string, ParserProtocol::kMessageTexts> texts;

    [[nodiscard]] static MailMessage read(std::string_view bytes);

    /// To be called once, before the first message: has the libraries load what they load.
    static void makeReady();
};

} // namespace dugwise
