// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EmbeddingTable.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// What somebody may have meant by a run of letters a-z that is no word.
namespace dugwise::WordGuess {

/// Two words written as one, as in "birthdayparty": of all ways to part it the one whose rarer half
/// is most common. Absent when none leaves two words of three letters or more.
[[nodiscard]] std::optional<std::pair<std::string, std::string>>
parted(std::string_view letters, const EmbeddingTable &table);

/// The most common word that differs by one letter too many, one too few, one wrong, or two
/// neighbours swapped; absent when there is none that is not rare.
[[nodiscard]] std::optional<std::string> repaired(std::string_view letters,
                                                  const EmbeddingTable &table);

} // namespace dugwise::WordGuess
