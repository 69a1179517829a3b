// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/StringSimilarity.h"

#include "Utilities/Text.h"

#include <algorithm>

namespace dugwise {

WordBigrams BigramTable::bigrams(std::string_view word)
{
    const std::vector<std::string_view> parts = characters(word);
    WordBigrams result{.characters = parts.size()};
    if (parts.size() < 2)
        return result;
    result.bigrams.reserve(parts.size() - 1);
    std::uint64_t previous = number(parts.front());
    for (std::size_t i = 1; i < parts.size(); ++i) {
        const std::uint64_t next = number(parts[i]);
        result.bigrams.push_back((previous << 32) | next);
        previous = next;
    }
    std::ranges::sort(result.bigrams);
    result.bigrams.erase(std::unique(result.bigrams.begin(), result.bigrams.end()),
                         result.bigrams.end());
    return result;
}

std::uint32_t BigramTable::number(std::string_view character)
{
    constexpr std::uint32_t kFirstBeyondBytes = 0x100;
    if (character.size() == 1)
        return static_cast<unsigned char>(character.front());
    const auto next = kFirstBeyondBytes + static_cast<std::uint32_t>(m_numbers.size());
    return m_numbers.try_emplace(std::string(character), next).first->second;
}

double stringSimilarity(const WordBigrams &a, const WordBigrams &b)
{
    const std::size_t total = a.bigrams.size() + b.bigrams.size();
    if (total == 0)
        return 0;
    std::size_t common = 0;
    auto left = a.bigrams.begin();
    auto right = b.bigrams.begin();
    while (left != a.bigrams.end() && right != b.bigrams.end()) {
        if (*left == *right)
            ++common;
        const bool stepLeft = *left <= *right;
        const bool stepRight = *right <= *left;
        left += stepLeft ? 1 : 0;
        right += stepRight ? 1 : 0;
    }
    return 2 * static_cast<double>(common) / static_cast<double>(total);
}

double stringSimilarity(std::string_view a, std::string_view b)
{
    BigramTable table;
    const WordBigrams first = table.bigrams(a);
    const WordBigrams second = table.bigrams(b);
    return stringSimilarity(first, second);
}

} // namespace dugwise
