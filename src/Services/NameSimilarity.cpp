// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/NameSimilarity.h"

#include "Utilities/SearchTerms.h"

#include <algorithm>

namespace dugwise {

namespace {

/// Calls use(number) for every two neighbouring bytes, as a number.
template <typename Use>
void forEachBytePair(std::string_view word, Use use)
{
    for (std::size_t i = 1; i < word.size(); ++i) {
        const auto first = static_cast<unsigned char>(word[i - 1]);
        const auto second = static_cast<unsigned char>(word[i]);
        use(static_cast<std::size_t>(256 * first + second));
    }
}

} // namespace

NameSimilarity::NameSimilarity(const std::vector<std::string> &keywords)
    : m_best(keywords.size())
{
    for (const std::string &keyword : keywords) {
        m_keywords.push_back({keyword, m_table.bigrams(keyword)});
        forEachBytePair(keyword, [&](std::size_t pair) { m_bytePairs.set(pair); });
    }
}

const std::vector<double> &NameSimilarity::best(std::string_view name)
{
    for (const std::size_t keyword : m_touched)
        m_best[keyword] = 0;
    m_touched.clear();
    for (const std::string_view token : tokenize(name)) {
        if (!sharesBytePair(token))
            continue;
        for (const Near &near : nearKeywords(token)) {
            m_best[near.keyword] = std::max(m_best[near.keyword], near.similarity);
            m_touched.push_back(near.keyword);
        }
    }
    return m_best;
}

bool NameSimilarity::sharesBytePair(std::string_view token) const
{
    bool isShared = false;
    forEachBytePair(token, [&](std::size_t pair) { isShared = isShared || m_bytePairs[pair]; });
    return isShared;
}

const std::vector<NameSimilarity::Near> &NameSimilarity::nearKeywords(std::string_view token)
{
    const auto [entry, isNew] = m_known.try_emplace(std::string(token));
    if (isNew) {
        const WordBigrams parts = m_table.bigrams(token);
        for (std::size_t i = 0; i < m_keywords.size(); ++i) {
            const double similarity = candidate(m_keywords[i], token, parts);
            if (similarity > kThreshold)
                entry->second.push_back({i, similarity});
        }
    }
    return entry->second;
}

double NameSimilarity::candidate(const Keyword &keyword,
                                 std::string_view token,
                                 const WordBigrams &tokenParts)
{
    if (token == keyword.text)
        return 1;
    const auto [shorter, longer] = std::minmax({keyword.parts.characters, tokenParts.characters});
    const bool isPart = token.find(keyword.text) != std::string_view::npos
                        || keyword.text.find(token) != std::string::npos;
    if (isPart)
        return 0.8 * (static_cast<double>(shorter) / static_cast<double>(longer));
    const auto [fewer, more] =
        std::minmax({keyword.parts.bigrams.size(), tokenParts.bigrams.size()});
    if (2 * fewer <= more) // then the result is below the threshold
        return 0;
    const double similarity = stringSimilarity(keyword.parts, tokenParts);
    return similarity > 0.6 ? 0.6 * similarity : 0;
}

} // namespace dugwise
