// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Tells how well vectors of sentences agree with people's judgement, and how well they find files.
// usage: embedding-quality TABLE [--sts FILE.csv] [--cases FILE.tsv]...
//   --sts    pairs of sentences as in the STS Benchmark: fields between tabs, of which the fifth to
//            the seventh are the similarity and the sentences
//   --cases  requests and files: case, split, request, role (answer or distractor), name and text
//            of a file, between tabs, below a line of titles
#include "Platform/SentenceEncoder.h"

#include <QFile>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <numeric>
#include <span>

namespace {

using namespace dugwise;

std::vector<QList<QByteArray>> records(const QString &path, qsizetype fields)
{
    std::vector<QList<QByteArray>> found;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return found;
    while (!file.atEnd()) {
        QByteArray line = file.readLine();
        if (line.endsWith('\n'))
            line.chop(1);
        QList<QByteArray> record = line.split('\t');
        if (record.size() >= fields)
            found.push_back(std::move(record));
    }
    return found;
}

/// Places in ascending order, from 1 on; equal values share the mean of theirs.
std::vector<double> ranks(const std::vector<double> &values)
{
    std::vector<std::size_t> order(values.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::sort(order, {}, [&](std::size_t i) { return values[i]; });
    std::vector<double> places(values.size());
    for (std::size_t begin = 0, end = 0; begin < order.size(); begin = end) {
        while (end < order.size() && values[order[end]] == values[order[begin]])
            ++end;
        for (std::size_t i = begin; i < end; ++i)
            places[order[i]] = static_cast<double>(begin + end + 1) / 2;
    }
    return places;
}

/// Pearson's correlation of two lists of the same length.
double correlation(const std::vector<double> &a, const std::vector<double> &b)
{
    const auto count = static_cast<double>(a.size());
    const double meanA = std::accumulate(a.begin(), a.end(), 0.0) / count;
    const double meanB = std::accumulate(b.begin(), b.end(), 0.0) / count;
    double ab = 0;
    double aa = 0;
    double bb = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        ab += (a[i] - meanA) * (b[i] - meanB);
        aa += (a[i] - meanA) * (a[i] - meanA);
        bb += (b[i] - meanB) * (b[i] - meanB);
    }
    return ab / std::sqrt(aa * bb);
}

/// From the least to the most alike. The calibrated distance bends the scale, which matters to
/// Pearson's correlation, so that it is undone.
double cosine(const SentenceVector &a, const SentenceVector &b)
{
    return std::inner_product(a.values.begin(), a.values.end(), b.values.begin(), 0.0);
}

bool judgeSentences(SentenceEncoder &encoder, const QString &path)
{
    std::vector<double> judged;
    std::vector<double> computed;
    for (const QList<QByteArray> &record : records(path, 7)) {
        judged.push_back(record[4].toDouble());
        computed.push_back(cosine(encoder.encode(record[5].toStdString()),
                                  encoder.encode(record[6].toStdString())));
    }
    if (judged.empty())
        return false;
    std::printf("%zu pairs of sentences: Spearman %.2f, Pearson %.2f\n",
                judged.size(),
                100 * correlation(ranks(judged), ranks(computed)),
                100 * correlation(judged, computed));
    return true;
}

struct File
{
    SentenceVector name;
    SentenceVector text;
};

struct Request
{
    SentenceVector words;
    std::size_t answer = 0; ///< number of the right file
};

/// What the text or the name says, whichever is closer.
double distance(const SentenceVector &request, const File &file)
{
    return std::min(SentenceVector::cosineDistance(request, file.name),
                    SentenceVector::cosineDistance(request, file.text));
}

/// Place of the right file among all, from 1 on.
std::size_t rankOfAnswer(const Request &request, const std::vector<File> &files)
{
    const double wanted = distance(request.words, files[request.answer]);
    const auto isCloser = [&](const File &file) { return distance(request.words, file) < wanted; };
    return 1 + static_cast<std::size_t>(std::ranges::count_if(files, isCloser));
}

bool judgeSearch(SentenceEncoder &encoder, const QString &path)
{
    std::vector<File> files;
    std::map<QByteArray, Request> requests;
    for (const QList<QByteArray> &record : records(path, 6)) {
        if (record[0] == "case_id")
            continue;
        if (record[3] == "answer")
            requests[record[0]] = {encoder.encode(record[2].toStdString()), files.size()};
        files.push_back(
            {encoder.encodeName(record[4].toStdString()), encoder.encode(record[5].toStdString())});
    }
    if (requests.empty())
        return false;
    double first = 0;
    double amongFive = 0;
    double reciprocal = 0;
    for (const auto &[number, request] : requests) {
        const std::size_t rank = rankOfAnswer(request, files);
        first += rank == 1 ? 1 : 0;
        amongFive += rank <= 5 ? 1 : 0;
        reciprocal += 1 / static_cast<double>(rank);
    }
    const auto count = static_cast<double>(requests.size());
    std::printf("%zu requests to %zu files: right file first %.0f %%, among five %.0f %%, mean "
                "reciprocal rank %.3f\n",
                requests.size(),
                files.size(),
                100 * first / count,
                100 * amongFive / count,
                reciprocal / count);
    return true;
}

int fail(const char *reason)
{
    std::fprintf(stderr, "embedding-quality: %s\n", reason);
    return 2;
}

} // namespace

int main(int count, char **values)
{
    const std::vector<const char *> arguments(values + std::min(count, 1), values + count);
    if (arguments.empty() || arguments.size() % 2 == 0)
        return fail("usage: TABLE [--sts FILE.csv] [--cases FILE.tsv]...");
    const auto table = EmbeddingTable::open(QFile::decodeName(arguments.front()));
    if (!table)
        return fail("no table there");
    SentenceEncoder encoder(*table);
    for (std::size_t i = 1; i < arguments.size(); i += 2) {
        const std::string_view option = arguments[i];
        const QString path = QFile::decodeName(arguments[i + 1]);
        if (option != "--sts" && option != "--cases")
            return fail("unknown option");
        if (!(option == "--sts" ? judgeSentences(encoder, path) : judgeSearch(encoder, path)))
            return fail("nothing to read there");
    }
    return 0;
}
