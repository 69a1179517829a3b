// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-build-embedding/WordGraph.h"

#include "Helpers/dugwise-build-embedding/Parallel.h"
#include "Utilities/EnglishTokens.h"
#include "Utilities/EnglishWords.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace dugwise {

namespace {

/// Words as frequent as this count half in a definition.
constexpr float kHalfWeightFrequency = 3e-4F;
/// How often a step leads to or from a gloss, or back from a meaning to its words, to 1 for a step
/// to a meaning or a related one.
constexpr float kGlossWeight = 0.5F;
constexpr float kWordWeight = 0.5F;
/// Ends of walks that are less likely, or not among so many likeliest, are left out.
constexpr float kLeastLikelihood = 3e-4F;
constexpr std::size_t kMostContexts = 300;
/// Subtracted from each logarithm.
constexpr double kShift = 1.5;

float sumOf(const SparseRow &row)
{
    float sum = 0;
    for (const SparseMatrix::Element &element : row)
        sum += element.value;
    return sum;
}

void scaleToSum(SparseRow &row, float wanted)
{
    const float factor = wanted / sumOf(row);
    for (SparseMatrix::Element &element : row)
        element.value *= factor;
}

void append(SparseRow &to, SparseRow from, float sum)
{
    if (from.empty())
        return;
    scaleToSum(from, sum);
    to.insert(to.end(), from.begin(), from.end());
}

/// Meanings of each word, in synsets.
SparseRows wordSenses(const Dictionary &dictionary, const Vocabulary &vocabulary)
{
    SparseRows rows(vocabulary.size());
    for (const auto &[word, senses] : dictionary.senses) {
        if (const auto number = vocabulary.find(word)) {
            SparseRow &row = rows[*number];
            for (const Sense &sense : senses)
                row.push_back({sense.synset, sense.weight});
            scaleToSum(row, 1);
        }
    }
    return rows;
}

/// What is written about each synset, in words; the rarer the heavier.
class GlossReader
{
public:
    GlossReader(const Vocabulary &vocabulary, Lemmatizer &lemmatizer)
        : m_vocabulary(vocabulary)
        , m_lemmatizer(lemmatizer)
    {}

    SparseRow read(const Synset &synset)
    {
        m_weights.clear();
        add(synset.definition);
        add(synset.examples);
        for (const std::string &word : synset.words) {
            if (word.find_first_of("_-") != std::string::npos)
                add(word);
        }
        SparseRow row;
        for (const auto &[word, weight] : m_weights)
            row.push_back({word, weight});
        return row;
    }

private:
    void add(const std::string &text)
    {
        for (const std::string &token : englishTokens(text)) {
            for (const Lemma &lemma : m_lemmatizer.lemmasOf(token))
                add(lemma);
        }
    }

    void add(const Lemma &lemma)
    {
        const auto word = m_vocabulary.find(lemma.word);
        if (!word || EnglishWords::isFunctionWord(lemma.word))
            return;
        const float frequency =
            (m_vocabulary.count(*word) + 0.5F) / static_cast<float>(m_vocabulary.tokens());
        m_weights[*word] += lemma.share * kHalfWeightFrequency / (kHalfWeightFrequency + frequency);
    }

    const Vocabulary &m_vocabulary;
    Lemmatizer &m_lemmatizer;
    std::map<std::uint32_t, float> m_weights;
};

SparseRows
synsetGlosses(const Dictionary &dictionary, const Vocabulary &vocabulary, Lemmatizer &lemmatizer)
{
    SparseRows rows;
    GlossReader reader(vocabulary, lemmatizer);
    for (const Synset &synset : dictionary.synsets)
        rows.push_back(reader.read(synset));
    return rows;
}

SparseRow relationsOf(const Synset &synset)
{
    SparseRow row;
    for (const Synset::Relation &relation : synset.relations)
        row.push_back({relation.synset, relation.weight});
    return row;
}

/// First steps, from words to synsets: to their meanings, and to what they are used to explain.
SparseRows firstSteps(const SparseRows &senses, const SparseRows &glosses)
{
    SparseRows uses = transposed(glosses, senses.size());
    SparseRows steps(senses.size());
    for (std::size_t word = 0; word < steps.size(); ++word) {
        append(steps[word], senses[word], 1);
        append(steps[word], std::move(uses[word]), kGlossWeight);
        if (!steps[word].empty())
            scaleToSum(steps[word], 1);
    }
    return steps;
}

/// Second steps, from synsets: to related ones, to the words of their glosses, to their own words.
/// Words are the columns behind all synsets.
SparseRows
secondSteps(const Dictionary &dictionary, const SparseRows &senses, const SparseRows &glosses)
{
    const std::size_t synsets = dictionary.synsets.size();
    const SparseRows words = transposed(senses, synsets);
    SparseRows steps(synsets);
    for (std::size_t synset = 0; synset < synsets; ++synset) {
        SparseRow toWords;
        append(toWords, glosses[synset], kGlossWeight);
        append(toWords, words[synset], kWordWeight);
        for (SparseMatrix::Element &element : toWords)
            element.column += static_cast<std::uint32_t>(synsets);
        append(steps[synset], relationsOf(dictionary.synsets[synset]), 1);
        steps[synset].insert(steps[synset].end(), toWords.begin(), toWords.end());
        if (!steps[synset].empty())
            scaleToSum(steps[synset], 1);
    }
    return steps;
}

/// Where walks from one word end, after one or two steps.
class Walker
{
public:
    Walker(const SparseRows &second, std::size_t columns)
        : m_second(second)
        , m_likelihoods(columns)
    {}

    /// The likeliest ends, ascending by their columns.
    SparseRow endsOf(const SparseRow &first)
    {
        for (const auto [synset, likelihood] : first) {
            visit(synset, likelihood);
            for (const auto [column, value] : m_second[synset])
                visit(column, likelihood * value);
        }
        SparseRow ends;
        for (const std::uint32_t column : m_visited) {
            if (m_likelihoods[column] > kLeastLikelihood)
                ends.push_back({column, m_likelihoods[column]});
            m_likelihoods[column] = 0;
        }
        m_visited.clear();
        keepLikeliest(ends);
        return ends;
    }

private:
    void visit(std::uint32_t column, float likelihood)
    {
        if (m_likelihoods[column] == 0)
            m_visited.push_back(column);
        m_likelihoods[column] += likelihood;
    }

    static void keepLikeliest(SparseRow &ends)
    {
        using Element = SparseMatrix::Element;
        const auto isLikelier = [](const Element &a, const Element &b) {
            return a.value != b.value ? a.value > b.value : a.column < b.column;
        };
        if (ends.size() > kMostContexts) {
            const auto end = ends.begin() + kMostContexts;
            std::nth_element(ends.begin(), end, ends.end(), isLikelier);
            ends.erase(end, ends.end());
        }
        std::ranges::sort(ends, {}, &Element::column);
    }

    const SparseRows &m_second;
    std::vector<float> m_likelihoods;
    std::vector<std::uint32_t> m_visited;
};

SparseRows endsOfWalks(const SparseRows &first,
                       const SparseRows &second,
                       std::size_t columns,
                       std::size_t threads)
{
    SparseRows ends(first.size());
    inParallel(threads, first.size(), [&](std::size_t, Range words) {
        Walker walker(second, columns);
        for (std::size_t word = words.begin; word < words.end; ++word)
            ends[word] = walker.endsOf(first[word]);
    });
    return ends;
}

SparseMatrix mutualInformation(const SparseRows &likelihoods, std::size_t columns)
{
    std::vector<double> columnSums(columns);
    std::vector<double> rowSums(likelihoods.size());
    double total = 0;
    for (std::size_t row = 0; row < likelihoods.size(); ++row) {
        for (const auto [column, value] : likelihoods[row]) {
            const auto likelihood = static_cast<double>(value);
            columnSums[column] += likelihood;
            rowSums[row] += likelihood;
            total += likelihood;
        }
    }
    SparseMatrix matrix{.columns = columns};
    for (std::size_t row = 0; row < likelihoods.size(); ++row) {
        for (const auto [column, value] : likelihoods[row]) {
            const double ratio =
                static_cast<double>(value) * total / (rowSums[row] * columnSums[column]);
            const double information = std::log(ratio) - kShift;
            if (information > 0)
                matrix.elements.push_back({column, static_cast<float>(information)});
        }
        matrix.ends.push_back(matrix.elements.size());
    }
    return matrix;
}

} // namespace

SparseMatrix wordContexts(const Dictionary &dictionary,
                          const Vocabulary &vocabulary,
                          Lemmatizer &lemmatizer,
                          std::size_t threads)
{
    const std::size_t columns = dictionary.synsets.size() + vocabulary.size();
    const SparseRows senses = wordSenses(dictionary, vocabulary);
    const SparseRows glosses = synsetGlosses(dictionary, vocabulary, lemmatizer);
    const SparseRows second = secondSteps(dictionary, senses, glosses);
    const SparseRows first = firstSteps(senses, glosses);
    return mutualInformation(endsOfWalks(first, second, columns, threads), columns);
}

} // namespace dugwise
