// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace dugwise {

/// The text of an HTML document as a person reads it: without tags, comments, scripts, style sheets
/// and its title, and with the characters that references stand for. What begins or ends a block or
/// a line is parted by a line feed. Takes whatever is wrong with it as browsers do, by and large.
[[nodiscard]] std::string htmlText(std::string_view html);

} // namespace dugwise
