// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// English text taken apart into words and numbers: runs of a-z or of 0-9, lower-cased. Letters of
/// the Latin script lose their accents first; everything else separates.
namespace dugwise {

/// Short forms are written out ("can't": can not, "he's": he), initials joined (U.S.: us), and so
/// are numbers grouped by commas (10,000). `utf8` need not be valid.
[[nodiscard]] std::vector<std::string> englishTokens(std::string_view utf8);

/// The same of a name, whose words may be told apart by their capitals alone: BeachTrip gives
/// beach and trip, HTMLFile html and file. Words like iPhone or PDFs stay whole.
[[nodiscard]] std::vector<std::string> englishNameTokens(std::string_view utf8);

} // namespace dugwise
