// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/FileResults.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr qsizetype kMostResults = 20;
constexpr qsizetype kMostUnscoredHits = 10;
constexpr double kUnscoredHitScore = 5;

IndexedFile toIndexedFile(const SpotlightSearchHit &hit, Instant now)
{
    const Instant date = hit.modifiedDate.value_or(now);
    return IndexedFile({
        .id = QUuid::createUuid(),
        .name = hit.name,
        .path = hit.path,
        .fileExtension = hit.fileExtension,
        .size = hit.size,
        .createdDate = date,
        .modifiedDate = date,
        .folderPath = hit.folderPath,
        .extractedText = std::nullopt,
        .lastUsedDate = std::nullopt,
        .downloadDate = std::nullopt,
        .downloadSource = std::nullopt,
    });
}

} // namespace

QList<IndexedFile>
filesBeyond(const QList<SearchResult> &results, const QList<SpotlightSearchHit> &hits, Instant now)
{
    QSet<QString> known;
    for (const SearchResult &result : results)
        known.insert(result.file->path);
    QList<IndexedFile> files;
    for (const SpotlightSearchHit &hit : hits) {
        if (!known.contains(hit.path))
            files.append(toIndexedFile(hit, now));
    }
    return files;
}

QList<SearchResult> unscoredResults(const QList<IndexedFile> &files)
{
    QList<SearchResult> results;
    for (const IndexedFile &file : files.first(std::min(files.size(), kMostUnscoredHits))) {
        results.append({QUuid::createUuid(),
                        file,
                        kUnscoredHitScore,
                        {SearchResult::MatchReason::filename},
                        u"Found via Spotlight system search."_s});
    }
    return results;
}

QList<SearchResult> bestResults(QList<SearchResult> results)
{
    std::ranges::stable_sort(results, std::ranges::greater(), &SearchResult::relevanceScore);
    results.resize(std::min(results.size(), kMostResults));
    return results;
}

} // namespace dugwise
