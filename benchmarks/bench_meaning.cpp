// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Makes the vectors of files, keeps them, and searches files by meaning.
// usage: bench_meaning TABLE [FILES]

#include "Measure.h"
#include "Platform/PassageVectors.h"
#include "Platform/TableEmbedding.h"
#include "SampleIndex.h"
#include "Services/RecordVectors.h"
#include "Services/SemanticSearchService.h"
#include "Services/VectorFile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>

using namespace dugwise;
using namespace dugwise::bench;

namespace {

constexpr qsizetype kEncoded = 1000;
constexpr int kRounds = 5;

/// The vectors of the first files for all others, each a copy of its own: how fast they are
/// compared does not depend on what they are.
QList<IndexedFile> withCopiedVectors(const QList<IndexedFile> &encoded,
                                     const QList<IndexedFile> &files)
{
    QList<IndexedFile> all = encoded;
    for (qsizetype i = encoded.size(); i < files.size(); ++i) {
        const QByteArray &vectors = encoded[i % encoded.size()].passageVectors();
        all.append(IndexedFile(*files[i], QByteArray(vectors.constData(), vectors.size())));
    }
    return all;
}

template <typename Work>
double bestOf(int rounds, Work work)
{
    double best = 1e9;
    for (int round = 0; round < rounds; ++round) {
        const Stopwatch watch;
        work();
        best = std::min(best, watch.seconds());
    }
    return best;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const qsizetype count = arguments.value(2, QStringLiteral("100000")).toLongLong();
    const QString path = arguments.value(1);
    const double opened =
        bestOf(kRounds, [&] { [[maybe_unused]] const auto table = EmbeddingTable::open(path); });
    std::optional<EmbeddingTable> table = EmbeddingTable::open(path);
    if (!table)
        qFatal("no table at %s", qPrintable(path));
    std::printf("table: %.1f MB, opened in %.1f ms\n",
                static_cast<double>(QFileInfo(path).size()) / kMegabyte,
                opened * 1000);
    const TableEmbedding embedding(std::move(*table));

    const QList<IndexedFile> files = sampleIndex(count);
    const Stopwatch encoding;
    const QList<IndexedFile> encoded =
        withVectors(files.first(std::min(kEncoded, count)), &embedding, {});
    std::printf("vectors of %lld files of 5,000 characters: %.3f ms a file, one thread\n",
                static_cast<long long>(encoded.size()),
                encoding.seconds() * 1000 / static_cast<double>(encoded.size()));
    const double query = bestOf(kRounds, [&] {
        for (int i = 0; i < 100; ++i)
            [[maybe_unused]] const auto asked = embedding.query("the invoice from the plumber");
    });
    std::printf("query of five words: %.1f us\n", query * 1e6 / 100);

    const double before = memory("VmRSS");
    const QList<IndexedFile> all = withCopiedVectors(encoded, files);
    std::printf("memory: %.0f bytes a file\n",
                (memory("VmRSS") - before) / static_cast<double>(count));
    const QTemporaryDir folder;
    const QString kept = folder.filePath(QStringLiteral("vectors"));
    const double saving = bestOf(2, [&] { VectorFile::save(all, kept, embedding.version()); });
    const double attaching = bestOf(2, [&] {
        [[maybe_unused]] const auto found = VectorFile::attach(files, kept, embedding.version());
    });
    std::printf("on disk: %.0f bytes a file; saved in %.0f ms, found again in %.0f ms\n",
                static_cast<double>(QFileInfo(kept).size()) / static_cast<double>(count),
                saving * 1000,
                attaching * 1000);

    const SemanticSearchService service([&] { return &embedding; });
    qsizetype found = 0;
    const double searching = bestOf(kRounds, [&] {
        found = service.search(QStringLiteral("a licence to copy programs"), all, 0.35, 30).size();
    });
    std::printf("search by meaning in %lld files: %.1f ms, %lld found\n",
                static_cast<long long>(count),
                searching * 1000,
                static_cast<long long>(found));
    return 0;
}
