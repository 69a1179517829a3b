// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Utilities/EnglishMorphology.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace dugwise {

/// A set of words that mean the same, and what is said about it.
struct Synset
{
    struct Relation
    {
        std::uint32_t synset;
        float weight;
    };

    std::vector<std::string> words{}; ///< lower-cased; the parts of phrases joined by _ or -
    std::vector<Relation> relations{};
    std::string definition{};
    std::string examples{};
};

/// One meaning of a word.
struct Sense
{
    std::uint32_t synset;
    float weight; ///< how common the word is in this meaning
};

/// The lexical database WordNet 3.0 as wninput(5WN), wndb(5WN) and cntlist(5WN) describe its files.
struct Dictionary final : Lexicon
{
    /// Absent when a file is missing or is not in the format of the database.
    [[nodiscard]] static std::optional<Dictionary> read(const std::string &folder);

    [[nodiscard]] PartOfSpeechWeights weights(std::string_view word) const override;
    [[nodiscard]] std::vector<Irregular> irregularBases(std::string_view form) const override;

    std::vector<Synset> synsets;
    std::size_t ownSynsets = 0; ///< the first of them, which are not additions of ours
    std::map<std::string, std::vector<Sense>, std::less<>> senses; ///< of each word
    std::unordered_map<std::string, PartOfSpeechWeights> wordWeights;
    std::unordered_map<std::string, float> tagCounts; ///< of words in marked texts
    /// Bases of irregular forms, where they and the forms are single words of the dictionary.
    std::map<std::string, std::vector<std::pair<PartOfSpeech, std::string>>, std::less<>> irregular;
};

} // namespace dugwise
