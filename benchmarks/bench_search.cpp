// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Searches records of 5,000 characters each for twelve keywords, on one core.
// usage: bench_search [RECORDS] [ROUNDS]

#include "Measure.h"
#include "SampleIndex.h"
#include "Services/FileSearchService.h"
#include "Utilities/DateIntentParser.h"
#include "Utilities/SearchTerms.h"

#include <QCoreApplication>

#include <algorithm>

using namespace dugwise;
using namespace dugwise::bench;

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const qsizetype count =
        QCoreApplication::arguments().value(1, QStringLiteral("100000")).toLongLong();
    const QList<IndexedFile> files = sampleIndex(count);
    std::printf("records in memory: %.2f times their text (%.0f MB)\n",
                memory("VmRSS") / textSize(files),
                textSize(files) / kMegabyte);

    const FileSearchService service(std::make_unique<SemanticSearchService>([] { return nullptr; }),
                                    SpotlightMetadataService(nullptr, nullptr),
                                    Clock());
    const QString query = QStringLiteral("deck budget");
    const auto keywords = expandKeywords(DateIntentParser::extractKeywords(query));
    const int rounds = QCoreApplication::arguments().value(2, QStringLiteral("5")).toInt();
    double best = 1e9;
    qsizetype found = 0;
    for (int round = 0; round < rounds; ++round) {
        const Stopwatch watch;
        found = service.search(query, std::nullopt, files).size();
        best = std::min(best, watch.seconds());
    }
    std::printf("search for %lld keywords: %.0f ms, %lld results\n",
                static_cast<long long>(keywords.size()),
                best * 1000,
                static_cast<long long>(found));
    return 0;
}
