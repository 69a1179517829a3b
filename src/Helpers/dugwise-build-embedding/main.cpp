// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Makes the table of word vectors that SentenceEncoder needs, from the lexical database WordNet and
// our own lists of words. The same input gives the same bytes.
#include "Helpers/dugwise-build-embedding/TableBytes.h"
#include "Helpers/dugwise-build-embedding/WordGraph.h"
#include "Helpers/dugwise-build-embedding/WordVectors.h"
#include "Platform/SentenceEncoder.h"
#include "Utilities/EnglishTokens.h"

#include <QFile>
#include <QSaveFile>

#include <cstdio>
#include <span>
#include <thread>

namespace {

using namespace dugwise;

constexpr int kFailed = 1;
constexpr int kMisused = 2;

struct Arguments
{
    std::size_t threads;
    std::string dictionary;
    std::string lists;
    std::string output;
};

std::optional<Arguments> parse(std::span<const char *const> arguments)
{
    std::size_t threads = std::max(std::thread::hardware_concurrency(), 1U);
    if (arguments.size() >= 2 && arguments[0] == std::string_view("--threads")) {
        constexpr int kMostThreads = 256;
        const int wanted = QByteArray(arguments[1]).toInt();
        if (wanted < 1 || wanted > kMostThreads)
            return std::nullopt;
        threads = static_cast<std::size_t>(wanted);
        arguments = arguments.subspan(2);
    }
    if (arguments.size() != 3 || std::string_view(arguments[0]).starts_with('-'))
        return std::nullopt;
    return Arguments{threads, arguments[0], arguments[1], arguments[2]};
}

/// The mean of the vectors of example sentences; `bytes` are a table without a mean.
EmbeddingTable::Vector meanVector(const Dictionary &dictionary, std::string_view bytes)
{
    constexpr std::size_t kFewTokens = 3;
    constexpr std::size_t kEvery = 12;
    EmbeddingTable::Vector mean{};
    const auto table = EmbeddingTable::read(bytes);
    if (!table)
        return mean;
    SentenceEncoder encoder(*table);
    std::array<double, mean.size()> sum{};
    std::size_t examples = 0;
    std::size_t taken = 0;
    for (const Synset &synset : std::span(dictionary.synsets).first(dictionary.ownSynsets)) {
        if (englishTokens(synset.examples).size() <= kFewTokens || examples++ % kEvery != 0)
            continue;
        const SentenceVector vector = encoder.encode(synset.examples);
        for (std::size_t i = 0; i < sum.size(); ++i)
            sum[i] += static_cast<double>(vector.values[i]);
        ++taken;
    }
    for (std::size_t i = 0; i < sum.size() && taken > 0; ++i)
        mean[i] = static_cast<float>(sum[i] / static_cast<double>(taken));
    return mean;
}

/// Absent when the dictionary is too small for so many dimensions, or too large for the format.
std::optional<std::string> build(Dictionary dictionary, const WordLists &lists, std::size_t threads)
{
    addGlossary(dictionary, lists.glossary);
    Lemmatizer lemmatizer(dictionary);
    const Vocabulary vocabulary(dictionary, lemmatizer);
    addTopics(dictionary, lists.topics, vocabulary, lemmatizer);
    if (vocabulary.size() < 2 * kColumns)
        return std::nullopt;
    const std::vector<EmbeddingFormat::Codes> codes =
        wordVectors(wordContexts(dictionary, vocabulary, lemmatizer, threads), threads);
    const auto withoutMean = tableBytes(dictionary, vocabulary, codes, {});
    if (!withoutMean)
        return std::nullopt;
    return tableBytes(dictionary, vocabulary, codes, meanVector(dictionary, *withoutMean));
}

bool save(const std::string &path, const std::string &bytes)
{
    QSaveFile file(QFile::decodeName(path.c_str()));
    return file.open(QIODevice::WriteOnly)
           && file.write(bytes.data(), static_cast<qint64>(bytes.size()))
                  == static_cast<qint64>(bytes.size())
           && file.commit();
}

int fail(int status, const std::string &reason)
{
    std::fprintf(stderr, "dugwise-build-embedding: %s\n", reason.c_str());
    return status;
}

} // namespace

int main(int count, char **values)
{
    const std::vector<const char *> all(values, values + count);
    const auto arguments = parse(std::span(all).subspan(count > 0 ? 1 : 0));
    if (!arguments)
        return fail(kMisused, "usage: [--threads N] DICTIONARY LISTS-FOLDER OUTPUT");
    auto dictionary = Dictionary::read(arguments->dictionary);
    if (!dictionary)
        return fail(kFailed, "no WordNet 3.0 dictionary in " + arguments->dictionary);
    const auto lists = WordLists::read(arguments->lists);
    if (!lists)
        return fail(kFailed, lists.error().toStdString());
    const auto bytes = build(*std::move(dictionary), *lists, arguments->threads);
    if (!bytes)
        return fail(kFailed, "the dictionary has too few words, or too many");
    if (!save(arguments->output, *bytes))
        return fail(kFailed, "cannot write " + arguments->output);
    return 0;
}
