// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/SentenceEncoder.h"

#include "Platform/WordGuess.h"
#include "Utilities/EnglishTokens.h"
#include "Utilities/EnglishWords.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>

namespace dugwise {

using namespace EmbeddingFormat;

namespace {

/// Words as frequent as this count half.
constexpr float kHalfWeightFrequency = 5e-4F;
constexpr float kFunctionWordFactor = 0.5F;
constexpr float kRequestWordFactor = 0.2F;
constexpr float kPartedFactor = 0.7F;
/// Share of the spelling in the square of a word's length; the rest is meaning.
constexpr float kIdentityShare = 0.15F;

/// Queries and names are this short; only there a slip of the pen is worth looking for.
constexpr std::size_t kShortText = 24;
/// What tells English from other languages, of which short words are often English ones as well. Of
/// the longer words of English sentences more than six in ten are known in 99 of 100 cases, in
/// other European languages less than half in 93 of 100; function words are two fifths of all
/// against one in twenty.
constexpr std::size_t kLongWord = 4;
constexpr std::ptrdiff_t kEnoughWords = 5;
constexpr std::ptrdiff_t kFunctionWordsOne = 5; ///< in so many

/// A token takes one kilobyte at most, or little more.
constexpr std::size_t kMostTokens = 8192;
constexpr std::size_t kMostRepaired = 1024;

bool isNumber(std::string_view token)
{
    return token.front() >= '0' && token.front() <= '9';
}

/// The two levels that a byte of codes stands for.
constexpr std::array<std::array<float, 2>, 256> kLevelPairs = [] {
    std::array<std::array<float, 2>, 256> pairs{};
    for (std::size_t byte = 0; byte < pairs.size(); ++byte)
        pairs[byte] = {kLevels[byte & 0xF], kLevels[byte >> 4]};
    return pairs;
}();

float lengthOf(const Codes &codes)
{
    float squares = 0;
    for (const std::uint8_t code : codes) {
        const auto [first, second] = kLevelPairs[code];
        squares += first * first + second * second;
    }
    return std::sqrt(squares);
}

float weightOf(std::string_view word, float frequency)
{
    const float weight = kHalfWeightFrequency / (kHalfWeightFrequency + frequency);
    if (EnglishWords::isRequestWord(word))
        return weight * kRequestWordFactor;
    if (EnglishWords::isFunctionWord(word) && !EnglishWords::isNegation(word))
        return weight * kFunctionWordFactor;
    return weight;
}

void scaleToUnit(std::span<float> vector)
{
    const double squares = std::inner_product(vector.begin(), vector.end(), vector.begin(), 0.0);
    if (!(squares > 0))
        return;
    const auto factor = static_cast<float>(1 / std::sqrt(squares));
    for (float &value : vector)
        value *= factor;
}

} // namespace

SentenceVector SentenceEncoder::encode(std::string_view utf8)
{
    return encodeTokens(englishTokens(utf8));
}

SentenceVector SentenceEncoder::encodeName(std::string_view utf8)
{
    return encodeTokens(englishNameTokens(utf8));
}

SentenceVector SentenceEncoder::encodeTokens(const std::vector<std::string> &tokens)
{
    SentenceVector vector;
    vector.isEmpty = tokens.empty();
    if (vector.isEmpty)
        return vector;
    if (m_tokens.size() > kMostTokens)
        m_tokens.clear();
    if (m_repaired.size() > kMostRepaired)
        m_repaired.clear();
    std::vector<Token *> read;
    read.reserve(tokens.size());
    for (const std::string &token : tokens)
        read.push_back(&lookUp(token));
    const bool isEnglish = areEnglish(read);
    if (isEnglish && tokens.size() <= kShortText) {
        for (std::size_t i = 0; i < tokens.size(); ++i)
            read[i] = &lookUpRepaired(tokens[i]);
    }
    for (Token *const token : read)
        ++token->count;
    // Each once, in the order of the text: the last digits of a sum depend on the order.
    for (Token *const token : read) {
        if (token->count > 0)
            addToken(vector.values, *token, isEnglish);
        token->count = 0;
    }
    centre(vector.values, isEnglish);
    return vector;
}

/// Whether half of the longer words are known or there are many function words, or there is too
/// little to tell by.
bool SentenceEncoder::areEnglish(const std::vector<Token *> &tokens)
{
    std::ptrdiff_t longOnes = 0;
    std::ptrdiff_t knownOnes = 0;
    std::ptrdiff_t functionWords = 0;
    for (const Token *const token : tokens) {
        longOnes += token->isLong ? 1 : 0;
        knownOnes += token->isLong && token->isWord ? 1 : 0;
        functionWords += token->isFunctionWord ? 1 : 0;
    }
    return longOnes < kEnoughWords || 2 * knownOnes >= longOnes
           || kFunctionWordsOne * functionWords >= std::ssize(tokens);
}

SentenceEncoder::Token &SentenceEncoder::lookUp(const std::string &token)
{
    const auto found = m_tokens.find(token);
    if (found != m_tokens.end())
        return found->second;
    Token fresh = read(token); // looks others up
    return m_tokens.emplace(token, std::move(fresh)).first->second;
}

SentenceEncoder::Token &SentenceEncoder::lookUpRepaired(const std::string &token)
{
    Token &plain = lookUp(token);
    if (plain.isWord || plain.isNumber || plain.isParted)
        return plain;
    const auto known = m_repaired.find(token);
    if (known != m_repaired.end())
        return known->second;
    const std::optional<std::string> meant = WordGuess::repaired(token, m_table);
    Token repaired = meant ? lookUp(*meant) : plain;
    repaired.count = 0;
    return m_repaired.emplace(token, std::move(repaired)).first->second;
}

SentenceEncoder::Token SentenceEncoder::read(const std::string &token) const
{
    Token fresh;
    fresh.isNumber = isNumber(token);
    fresh.isLong = !fresh.isNumber && token.size() >= kLongWord;
    fresh.isFunctionWord = EnglishWords::isFunctionWord(token);
    fresh.terms = terms(token, 1);
    fresh.isWord = !fresh.isNumber && !fresh.terms.front().unknown;
    if (fresh.isWord || fresh.isNumber)
        return fresh;
    if (const auto parts = WordGuess::parted(token, m_table)) {
        fresh.isParted = true;
        fresh.terms = terms(parts->first, kPartedFactor);
        std::ranges::move(terms(parts->second, kPartedFactor), std::back_inserter(fresh.terms));
    }
    return fresh;
}

std::vector<SentenceEncoder::Term> SentenceEncoder::terms(std::string_view token,
                                                          float factor) const
{
    std::vector<Term> found;
    for (const Lemma &lemma : lemmas(token, m_table))
        found.push_back(term(lemma.word, factor * lemma.share));
    return found;
}

SentenceEncoder::Term SentenceEncoder::term(const std::string &word, float share) const
{
    const std::optional<std::uint32_t> number = m_table.find(word);
    const float weight = share * weightOf(word, m_table.frequency(number));
    Term term{.hash = fnv1a(word)};
    if (!number && !isNumber(word))
        term.unknown = std::make_shared<WordIdentity::Vector>(WordIdentity::ofUnknown(word));
    term.identityWeight = number ? weight * std::sqrt(kIdentityShare) : weight;
    if (number) {
        term.meaning = m_table.meaning(*number);
        if (term.meaning)
            term.meaningScale = weight * std::sqrt(1 - kIdentityShare) / lengthOf(*term.meaning);
    }
    return term;
}

void SentenceEncoder::addToken(Sum &sum, const Token &token, bool isEnglish)
{
    for (const Term &term : token.terms)
        addTerm(sum, term, token.count, isEnglish);
}

/// Of a text in another language the words' meanings in English say nothing.
void SentenceEncoder::addTerm(Sum &sum, const Term &term, float count, bool isEnglish)
{
    if (isEnglish && term.meaning) {
        const float scale = count * term.meaningScale;
        for (std::size_t i = 0; i < kCodeBytes; ++i) {
            const std::array<float, 2> &levels = kLevelPairs[(*term.meaning)[i]];
            sum[2 * i] += scale * levels[0];
            sum[2 * i + 1] += scale * levels[1];
        }
    }
    const auto identity = std::span(sum).last<kIdentitySize>();
    const float weight = count * term.identityWeight;
    if (!term.unknown)
        return WordIdentity::add(identity, term.hash, weight);
    for (std::size_t i = 0; i < kIdentitySize; ++i)
        identity[i] += weight * (*term.unknown)[i];
}

void SentenceEncoder::centre(Sum &sum, bool isEnglish) const
{
    scaleToUnit(sum);
    for (std::size_t i = isEnglish ? 0 : kMeaningSize; i < sum.size(); ++i)
        sum[i] -= m_table.mean()[i];
    scaleToUnit(sum);
}

} // namespace dugwise
