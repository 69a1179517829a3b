// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace dugwise {

/// Text that a stranger wrote, fit to be kept: valid UTF-8 without control characters, in which one
/// blank stands for white space of any kind and length, and none at the ends. Bytes that are no
/// UTF-8 are read as Windows-1252, which is what most unlabelled ones are. Cut after `most` bytes.
[[nodiscard]] std::string cleanText(std::string_view text, std::size_t most);

/// Appends a character's UTF-8; nothing for what is no character.
void appendCharacter(std::string &utf8, char32_t character);

} // namespace dugwise
