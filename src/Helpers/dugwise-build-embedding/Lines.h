// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Text files, line by line and field by field.
namespace dugwise {

/// The lines of a file; absent when it cannot be read.
[[nodiscard]] std::optional<std::vector<std::string>> linesOf(const std::string &path);

/// The parts of a line between blanks.
[[nodiscard]] std::vector<std::string_view> fieldsOf(std::string_view line);

/// A field's number; 0 when it is none.
[[nodiscard]] unsigned numberIn(std::string_view field, int base = 10);

[[nodiscard]] std::string lowerCasedAscii(std::string_view text);

/// Whether a text is a word of letters a-z alone.
[[nodiscard]] bool isAlphabetic(std::string_view text);

} // namespace dugwise
