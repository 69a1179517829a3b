// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Utilities/StringSimilarity.h"

#include <bitset>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace dugwise {

/// How near the words of a file name come to the keywords of one search. Names share most of
/// their words, so the keywords are compared with each distinct word once.
class NameSimilarity
{
public:
    /// Similarities up to this one count as none.
    static constexpr double kThreshold = 0.4;

    /// Keywords are distinct, lower-cased UTF-8.
    explicit NameSimilarity(const std::vector<std::string> &keywords);

    /// For each keyword the best similarity among the words of the lower-cased `name`, 0 where
    /// none is above the threshold. Valid until the next call.
    [[nodiscard]] const std::vector<double> &best(std::string_view name);

private:
    static constexpr std::size_t kBytePairs = std::size_t{256} * 256;

    struct Keyword
    {
        std::string text;
        WordBigrams parts;
    };
    struct Near
    {
        std::size_t keyword = 0;
        double similarity = 0;
    };

    [[nodiscard]] bool sharesBytePair(std::string_view token) const;
    [[nodiscard]] const std::vector<Near> &nearKeywords(std::string_view token);
    [[nodiscard]] static double
    candidate(const Keyword &keyword, std::string_view token, const WordBigrams &tokenParts);

    BigramTable m_table;
    std::vector<Keyword> m_keywords;
    /// Pairs of bytes in the keywords. A word that has none of them is near to none: most numbers.
    std::bitset<kBytePairs> m_bytePairs;
    std::unordered_map<std::string, std::vector<Near>> m_known;
    std::vector<double> m_best;
    std::vector<std::size_t> m_touched;
};

} // namespace dugwise
