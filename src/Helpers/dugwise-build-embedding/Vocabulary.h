// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Helpers/dugwise-build-embedding/Dictionary.h"
#include "Helpers/dugwise-build-embedding/WordLists.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace dugwise {

/// What English text is taken apart into, remembered from one occurrence of a word to the next.
class Lemmatizer
{
public:
    explicit Lemmatizer(const Lexicon &lexicon)
        : m_lexicon(lexicon)
    {}

    [[nodiscard]] const std::vector<Lemma> &lemmasOf(const std::string &token);

private:
    const Lexicon &m_lexicon;
    std::unordered_map<std::string, std::vector<Lemma>> m_known;
};

/// The words that get vectors: those of letters alone that the dictionary lists or uses.
class Vocabulary
{
public:
    Vocabulary(const Dictionary &dictionary, Lemmatizer &lemmatizer);

    [[nodiscard]] std::size_t size() const { return m_words.size(); }
    /// Ascending by their bytes.
    [[nodiscard]] const std::vector<std::string> &words() const { return m_words; }
    [[nodiscard]] std::optional<std::uint32_t> find(const std::string &word) const;
    /// Occurrences in the definitions and examples of the database.
    [[nodiscard]] float count(std::uint32_t word) const { return m_counts[word]; }
    /// All occurrences there, of numbers too.
    [[nodiscard]] double tokens() const { return m_tokens; }

private:
    std::vector<std::string> m_words;
    std::vector<float> m_counts;
    std::unordered_map<std::string, std::uint32_t> m_numbers;
    double m_tokens = 0;
};

/// Adds the glossary to the dictionary, each entry as a synset.
void addGlossary(Dictionary &dictionary, const std::vector<GlossaryEntry> &glossary);

/// Adds the topics, each as a synset of all its words. A fifth of a word's occurrences goes to its
/// topics.
void addTopics(Dictionary &dictionary,
               const std::vector<Topic> &topics,
               const Vocabulary &vocabulary,
               Lemmatizer &lemmatizer);

} // namespace dugwise
