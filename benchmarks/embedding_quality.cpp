// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Tells how well vectors of sentences agree with people's judgement, and how well they find files.
// usage: embedding-quality TABLE [--sts FILE.csv] [--cases FILE.tsv]...
//   --sts    pairs of sentences as in the STS Benchmark: fields between tabs, of which the fifth to
//            the seventh are the similarity and the sentences
//   --cases  requests and files: case, split, request, role (answer or distractor), name and text
//            of a file, between tabs, below a line of titles
#include "Platform/SentenceEncoder.h"
#include "Platform/TableEmbedding.h"
#include "Services/FileSearchService.h"
#include "Services/RecordVectors.h"
#include "Services/SemanticSearchService.h"
#include "Utilities/FilePath.h"
#include "Utilities/Text.h"

#include <QFile>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
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

struct Request
{
    QString words;
    QString answer; ///< path of the right file
};

struct Cases
{
    QList<IndexedFile> files; ///< in the order of their names, which favours nobody
    std::vector<Request> requests;
};

Cases readCases(const QString &path, const SentenceEmbedding &embedding)
{
    Cases cases;
    for (const QList<QByteArray> &record : records(path, 6)) {
        if (record[0] == "case_id")
            continue;
        IndexedFileFields fields{
            .id = QUuid::createUuid(),
            .name = QString::fromUtf8(record[4]),
            .path = QString::fromUtf8("/cases/" + record[0] + '/' + record[4]),
            .folderPath = QStringLiteral("/cases"),
        };
        fields.fileExtension = FilePath::fileExtension(fields.name);
        if (!record[5].isEmpty())
            fields.extractedText = makeTextContent(record[5]);
        if (record[3] == "answer")
            cases.requests.push_back({QString::fromUtf8(record[2]), fields.path});
        cases.files.append(IndexedFile(std::move(fields)));
    }
    std::ranges::sort(cases.files, {}, [](const IndexedFile &file) { return file->name; });
    cases.files = withVectors(cases.files, &embedding, {});
    return cases;
}

/// Where the right files of all requests are found.
struct Places
{
    double first = 0;
    double amongFive = 0;
    double shown = 0; ///< among those that a search gives
    double reciprocal = 0;
};

/// `find` gives the paths that answer a request, the best first.
void judge(const char *what, const Cases &cases, const std::function<QStringList(QString)> &find)
{
    Places places;
    for (const Request &request : cases.requests) {
        const qsizetype place = find(request.words).indexOf(request.answer);
        places.first += place == 0 ? 1 : 0;
        places.amongFive += place >= 0 && place < 5 ? 1 : 0;
        places.shown += place >= 0 ? 1 : 0;
        places.reciprocal += place >= 0 ? 1 / static_cast<double>(place + 1) : 0;
    }
    const auto count = static_cast<double>(cases.requests.size());
    std::printf("  %-24s right file first %3.0f %%, among five %3.0f %%, found %3.0f %%, mean "
                "reciprocal rank %.3f\n",
                what,
                100 * places.first / count,
                100 * places.amongFive / count,
                100 * places.shown / count,
                places.reciprocal / count);
}

bool judgeSearch(const SentenceEmbedding &embedding, const QString &path)
{
    const Cases cases = readCases(path, embedding);
    if (cases.requests.empty())
        return false;
    std::printf("%zu requests to %lld files\n",
                cases.requests.size(),
                static_cast<long long>(cases.files.size()));
    const SemanticSearchService similar([&] { return &embedding; });
    judge("by similarity alone", cases, [&](const QString &words) {
        QStringList paths;
        for (const SemanticMatch &match : similar.search(words, cases.files, 0, cases.files.size()))
            paths.append(match.file->path);
        return paths;
    });
    const SentenceEmbedding *const none = nullptr;
    for (const SentenceEmbedding *const used : {none, &embedding}) {
        const FileSearchService service(
            std::make_unique<SemanticSearchService>([used] { return used; }),
            SpotlightMetadataService(nullptr, nullptr),
            Clock());
        judge(used ? "file search with meaning" : "file search without",
              cases,
              [&](const QString &words) {
                  QStringList paths;
                  for (const SearchResult &result :
                       service.search(words, std::nullopt, cases.files))
                      paths.append(result.file->path);
                  return paths;
              });
    }
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
    const QString path = QFile::decodeName(arguments.front());
    std::optional<EmbeddingTable> table = EmbeddingTable::open(path);
    if (!table)
        return fail("no table there");
    SentenceEncoder encoder(*table);
    const TableEmbedding embedding(*EmbeddingTable::open(path));
    for (std::size_t i = 1; i < arguments.size(); i += 2) {
        const std::string_view option = arguments[i];
        const QString file = QFile::decodeName(arguments[i + 1]);
        if (option != "--sts" && option != "--cases")
            return fail("unknown option");
        if (!(option == "--sts" ? judgeSentences(encoder, file) : judgeSearch(embedding, file)))
            return fail("nothing to read there");
    }
    return 0;
}
