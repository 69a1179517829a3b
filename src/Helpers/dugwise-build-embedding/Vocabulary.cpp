// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-build-embedding/Vocabulary.h"

#include "Helpers/dugwise-build-embedding/Lines.h"
#include "Utilities/EnglishTokens.h"
#include "Utilities/EnglishWords.h"

#include <map>
#include <numeric>

namespace dugwise {

namespace {

/// Share of its meanings that a word has in topics, to those that it has by itself.
constexpr float kTopicShare = 0.25F;
constexpr float kSubjectWeight = 2;
/// What a glossary entry's words have beside their count, as the first meaning of a word has.
constexpr float kFirstSense = 0.5F;

std::uint32_t addSynset(Dictionary &dictionary, Synset synset)
{
    dictionary.synsets.push_back(std::move(synset));
    return static_cast<std::uint32_t>(dictionary.synsets.size() - 1);
}

float weightSum(const std::vector<Sense> &senses)
{
    return std::accumulate(senses.begin(), senses.end(), 0.0F, [](float sum, const Sense &sense) {
        return sum + sense.weight;
    });
}

/// The words of a topic with their weights in it.
std::map<std::string, float> weightedWords(const Topic &topic, Lemmatizer &lemmatizer)
{
    std::map<std::string, float> words;
    const auto add = [&](const std::string &text, float weight) {
        for (const std::string &token : englishTokens(text)) {
            const std::string &word = lemmatizer.lemmasOf(token).front().word;
            if (isAlphabetic(word) && !EnglishWords::isFunctionWord(word))
                words[word] += weight;
        }
    };
    add(topic.subject, kSubjectWeight);
    add(topic.words, 1);
    return words;
}

} // namespace

const std::vector<Lemma> &Lemmatizer::lemmasOf(const std::string &token)
{
    auto found = m_known.find(token);
    if (found == m_known.end())
        found = m_known.emplace(token, lemmas(token, m_lexicon)).first;
    return found->second;
}

Vocabulary::Vocabulary(const Dictionary &dictionary, Lemmatizer &lemmatizer)
{
    std::map<std::string, float> counts;
    for (std::size_t i = 0; i < dictionary.ownSynsets; ++i) {
        const Synset &synset = dictionary.synsets[i];
        for (const std::string &text : {synset.definition, synset.examples}) {
            for (const std::string &token : englishTokens(text)) {
                for (const Lemma &lemma : lemmatizer.lemmasOf(token))
                    counts[lemma.word] += lemma.share;
            }
        }
    }
    for (const auto &[word, count] : counts)
        m_tokens += static_cast<double>(count);
    for (const auto &[word, senses] : dictionary.senses)
        counts.try_emplace(word, 0.0F);
    for (const auto &[word, count] : counts) {
        if (!isAlphabetic(word))
            continue;
        m_numbers.emplace(word, static_cast<std::uint32_t>(m_words.size()));
        m_words.push_back(word);
        m_counts.push_back(count);
    }
}

std::optional<std::uint32_t> Vocabulary::find(const std::string &word) const
{
    const auto found = m_numbers.find(word);
    return found == m_numbers.end() ? std::nullopt : std::optional(found->second);
}

void addGlossary(Dictionary &dictionary, const std::vector<GlossaryEntry> &glossary)
{
    constexpr auto kNoun = static_cast<std::size_t>(PartOfSpeech::noun);
    for (const GlossaryEntry &entry : glossary) {
        const std::uint32_t synset =
            addSynset(dictionary, {.words = entry.words, .definition = entry.definition});
        for (const std::string &word : entry.words) {
            dictionary.senses[word].push_back({synset, entry.count + kFirstSense});
            // New words are nouns, with plurals; forms of other words stay those.
            const bool isNew =
                dictionary.weights(lemmas(word, dictionary).front().word) == PartOfSpeechWeights{};
            if (isNew && !EnglishWords::isFunctionWord(word))
                dictionary.wordWeights[word].at(kNoun) = entry.count + kFirstSense;
        }
    }
}

void addTopics(Dictionary &dictionary,
               const std::vector<Topic> &topics,
               const Vocabulary &vocabulary,
               Lemmatizer &lemmatizer)
{
    std::map<std::string, std::vector<Sense>> memberships;
    for (const Topic &topic : topics) {
        const std::uint32_t synset = addSynset(dictionary, {});
        for (const auto &[word, weight] : weightedWords(topic, lemmatizer)) {
            if (vocabulary.find(word))
                memberships[word].push_back({synset, weight});
        }
    }
    for (const auto &[word, topicsOfWord] : memberships) {
        std::vector<Sense> &senses = dictionary.senses[word];
        const float own = senses.empty() ? 1 : weightSum(senses);
        const float factor = kTopicShare * own / weightSum(topicsOfWord);
        for (const Sense &sense : topicsOfWord)
            senses.push_back({sense.synset, factor * sense.weight});
    }
}

} // namespace dugwise
