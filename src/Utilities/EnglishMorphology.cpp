// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/EnglishMorphology.h"

#include "Utilities/EnglishWords.h"

#include <algorithm>
#include <span>

namespace dugwise {

namespace {

/// An ending of a form and what the word has in its place (morphy(7WN)).
struct Detachment
{
    std::string_view ending;
    std::string_view replacement;
};

constexpr std::array<Detachment, 8> kNounRules{{{"s", ""},
                                                {"ses", "s"},
                                                {"xes", "x"},
                                                {"zes", "z"},
                                                {"ches", "ch"},
                                                {"shes", "sh"},
                                                {"men", "man"},
                                                {"ies", "y"}}};
constexpr std::array<Detachment, 8> kVerbRules{{{"s", ""},
                                                {"ies", "y"},
                                                {"es", "e"},
                                                {"es", ""},
                                                {"ed", "e"},
                                                {"ed", ""},
                                                {"ing", "e"},
                                                {"ing", ""}}};
constexpr std::array<Detachment, 4> kAdjectiveRules{
    {{"er", ""}, {"est", ""}, {"er", "e"}, {"est", "e"}}};

/// Longer than any form of a word; what is longer is a word to itself.
constexpr std::size_t kLongestForm = 64;
/// Readings rarer than this share are left out.
constexpr float kLeastShare = 0.08F;

std::span<const Detachment> rulesOf(PartOfSpeech part)
{
    switch (part) {
    case PartOfSpeech::noun:
        return kNounRules;
    case PartOfSpeech::verb:
        return kVerbRules;
    case PartOfSpeech::adjective:
        return kAdjectiveRules;
    case PartOfSpeech::adverb:
        break;
    }
    return {};
}

/// Collects the words that one form may belong to.
class Readings
{
public:
    Readings(std::string_view form, const Lexicon &lexicon)
        : m_form(form)
        , m_lexicon(lexicon)
        , m_ownWeights(lexicon.weights(form))
        , m_irregular(lexicon.irregularBases(form))
    {}

    /// All of them, with weights for shares; each counts once in every part of speech.
    std::vector<Lemma> all()
    {
        for (const PartOfSpeech part : {PartOfSpeech::noun,
                                        PartOfSpeech::verb,
                                        PartOfSpeech::adjective,
                                        PartOfSpeech::adverb})
            addPart(part);
        return std::move(m_found);
    }

private:
    void addPart(PartOfSpeech part)
    {
        m_ofPart.clear();
        bool isIrregular = false;
        for (const Lexicon::Irregular &irregular : m_irregular) {
            if (irregular.part != part)
                continue;
            isIrregular = true;
            add(irregular.base, part, m_lexicon.weights(irregular.base));
        }
        add(m_form, part, m_ownWeights);
        const bool hasNoEnding = part == PartOfSpeech::noun && m_form.ends_with("ss");
        if (!isIrregular && !hasNoEnding)
            addRegular(part);
    }

    void addRegular(PartOfSpeech part)
    {
        // "boxesful" is the plural of "boxful".
        constexpr std::string_view kFul = "ful";
        const bool hasFul =
            part == PartOfSpeech::noun && m_form.size() > kFul.size() && m_form.ends_with(kFul);
        const std::string_view inflected =
            hasFul ? m_form.substr(0, m_form.size() - kFul.size()) : m_form;
        for (const Detachment &rule : rulesOf(part)) {
            if (inflected.size() < rule.ending.size() + 2 || !inflected.ends_with(rule.ending))
                continue;
            m_word = inflected.substr(0, inflected.size() - rule.ending.size());
            m_word += rule.replacement;
            if (hasFul)
                m_word += kFul;
            add(m_word, part, m_lexicon.weights(m_word));
        }
    }

    void add(std::string_view word, PartOfSpeech part, const PartOfSpeechWeights &weights)
    {
        const float weight = weights.at(static_cast<std::size_t>(part));
        if (weight <= 0)
            return;
        auto known = std::ranges::find(m_found, word, &Lemma::word);
        if (known == m_found.end())
            known = m_found.insert(known, {std::string(word), 0});
        const auto number = static_cast<std::size_t>(known - m_found.begin());
        if (std::ranges::find(m_ofPart, number) != m_ofPart.end())
            return;
        m_ofPart.push_back(number);
        known->share += weight;
    }

    std::string_view m_form;
    const Lexicon &m_lexicon;
    PartOfSpeechWeights m_ownWeights;
    std::vector<Lexicon::Irregular> m_irregular;
    std::vector<Lemma> m_found;
    std::vector<std::size_t> m_ofPart; ///< those of m_found that the current part has given
    std::string m_word;
};

void scaleToShares(std::vector<Lemma> &lemmas)
{
    float sum = 0;
    for (const Lemma &lemma : lemmas)
        sum += lemma.share;
    for (Lemma &lemma : lemmas)
        lemma.share /= sum;
}

} // namespace

std::vector<Lemma> lemmas(std::string_view token, const Lexicon &lexicon)
{
    const bool isNumber = !token.empty() && token.front() >= '0' && token.front() <= '9';
    if (EnglishWords::isFunctionWord(token))
        return {{std::string(EnglishWords::functionWordBase(token)), 1}};
    if (isNumber || token.size() > kLongestForm)
        return {{std::string(token), 1}};
    std::vector<Lemma> found = Readings(token, lexicon).all();
    if (found.empty())
        return {{std::string(token), 1}};
    scaleToShares(found);
    std::erase_if(found, [](const Lemma &lemma) { return lemma.share <= kLeastShare; });
    scaleToShares(found);
    std::ranges::stable_sort(found, std::ranges::greater(), &Lemma::share);
    return found;
}

} // namespace dugwise
