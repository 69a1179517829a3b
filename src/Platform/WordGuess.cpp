// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/WordGuess.h"

#include "Utilities/EnglishWords.h"

#include <algorithm>
#include <utility>

namespace dugwise::WordGuess {

namespace {

constexpr std::size_t kShortestPart = 3;
constexpr std::size_t kShortestRepaired = 5;
/// Longer runs are no two words, and no word.
constexpr std::size_t kLongestParted = 40;
constexpr std::size_t kLongestRepaired = 24;
/// What has been counted no more often than this is rather a name than a slip.
constexpr float kRareHalf = 5;
constexpr float kRareWord = 3;

/// How often the likeliest word of this form has been counted; negative for an unknown one.
float countOf(std::string_view form, const EmbeddingTable &table)
{
    const std::string word = lemmas(form, table).front().word;
    const auto number = table.find(word);
    return number ? table.count(*number) : -1;
}

/// Keeps the best of the words that are tried.
class Candidates
{
public:
    Candidates(std::string_view letters, const EmbeddingTable &table)
        : m_letters(letters)
        , m_table(table)
    {}

    void attempt(const std::string &word)
    {
        auto number = m_table.find(word);
        if (!number && word.size() >= kShortestRepaired && word.back() == 's') // a plural
            number = m_table.find({word.data(), word.size() - 1});
        if (!number || word == m_letters)
            return;
        // The first letter is seldom wrong.
        const float worth =
            m_table.count(*number) + (word.front() == m_letters.front() ? 0.5F : 0.0F);
        if (worth > m_worth) {
            m_worth = worth;
            m_best = word;
        }
    }

    [[nodiscard]] std::optional<std::string> best() && { return std::move(m_best); }

private:
    std::string_view m_letters;
    const EmbeddingTable &m_table;
    float m_worth = kRareWord;
    std::optional<std::string> m_best;
};

} // namespace

std::optional<std::pair<std::string, std::string>> parted(std::string_view letters,
                                                          const EmbeddingTable &table)
{
    std::optional<std::pair<std::string, std::string>> best;
    if (letters.size() > kLongestParted)
        return best;
    float most = kRareHalf;
    for (std::size_t at = kShortestPart; at + kShortestPart <= letters.size(); ++at) {
        const std::string_view first = letters.substr(0, at);
        const std::string_view second = letters.substr(at);
        if (EnglishWords::isFunctionWord(first))
            continue;
        const float ofFirst = countOf(first, table);
        const float count = ofFirst > most ? std::min(ofFirst, countOf(second, table)) : 0;
        if (count > most) {
            most = count;
            best.emplace(first, second);
        }
    }
    return best;
}

std::optional<std::string> repaired(std::string_view letters, const EmbeddingTable &table)
{
    if (letters.size() < kShortestRepaired || letters.size() > kLongestRepaired)
        return std::nullopt;
    Candidates candidates(letters, table);
    std::string word(letters);
    for (std::size_t at = 0; at < letters.size(); ++at) {
        candidates.attempt(std::string(word).erase(at, 1));
        if (at + 1 < letters.size()) {
            std::swap(word[at], word[at + 1]);
            candidates.attempt(word);
            std::swap(word[at], word[at + 1]);
        }
        for (char other = 'a'; other <= 'z'; ++other) {
            word[at] = other;
            candidates.attempt(word);
        }
        word[at] = letters[at];
    }
    for (std::size_t at = 0; at <= letters.size(); ++at) {
        word.insert(at, 1, ' ');
        for (char other = 'a'; other <= 'z'; ++other) {
            word[at] = other;
            candidates.attempt(word);
        }
        word.erase(at, 1);
    }
    return std::move(candidates).best();
}

} // namespace dugwise::WordGuess
