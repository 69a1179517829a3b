// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace dugwise {

/// A word taken apart for comparison with others of the same BigramTable.
struct WordBigrams
{
    std::size_t characters = 0;           ///< length of the word
    std::vector<std::uint64_t> bigrams{}; ///< distinct pairs of adjacent characters, ascending
};

/// Gives every character a number, so that pairs of characters compare as one integer.
class BigramTable
{
public:
    [[nodiscard]] WordBigrams bigrams(std::string_view word);

private:
    [[nodiscard]] std::uint32_t number(std::string_view character);

    std::unordered_map<std::string, std::uint32_t> m_numbers;
};

/// Sorensen-Dice coefficient of the two sets of bigrams, from 0 to 1; 0 when both are empty.
[[nodiscard]] double stringSimilarity(const WordBigrams &a, const WordBigrams &b);

/// The same of two UTF-8 strings.
[[nodiscard]] double stringSimilarity(std::string_view a, std::string_view b);

} // namespace dugwise
