// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

/// From the forms of English words to the words that dictionaries list: "mice" to "mouse".
namespace dugwise {

enum class PartOfSpeech { noun, verb, adjective, adverb };
constexpr std::size_t kPartsOfSpeech = 4;

/// How common a word is as each part of speech; 0 where it is none.
using PartOfSpeechWeights = std::array<float, kPartsOfSpeech>;

/// What the rules need to know of a dictionary.
class Lexicon
{
public:
    struct Irregular
    {
        PartOfSpeech part;
        std::string_view base; ///< a word of that part
    };

    virtual ~Lexicon() = default;

    [[nodiscard]] virtual PartOfSpeechWeights weights(std::string_view word) const = 0;
    /// The bases of a form that follows no rule; empty for all others.
    [[nodiscard]] virtual std::vector<Irregular> irregularBases(std::string_view form) const = 0;

protected:
    Lexicon() = default;
    Lexicon(const Lexicon &) = default;
    Lexicon(Lexicon &&) = default;
    Lexicon &operator=(const Lexicon &) = default;
    Lexicon &operator=(Lexicon &&) = default;
};

struct Lemma
{
    std::string word;
    float share; ///< likelihood that the form is one of this word; all shares sum to 1
};

/// The words that `token`, one of englishTokens(), may be a form of, the likeliest first: never
/// none, for what the dictionary does not know stands for itself.
[[nodiscard]] std::vector<Lemma> lemmas(std::string_view token, const Lexicon &lexicon);

} // namespace dugwise
