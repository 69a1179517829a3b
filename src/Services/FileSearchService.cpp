// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/FileSearchService.h"

#include "Services/FileScorer.h"
#include "Utilities/Formatters.h"
#include "Utilities/SearchTerms.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace dugwise {

using MatchReason = SearchResult::MatchReason;

namespace {

constexpr qsizetype kMostSemanticMatches = 30;
constexpr std::size_t kMostResults = 15;

struct Ranked
{
    qsizetype position = 0; ///< in the list of files
    FileScore score;
};

} // namespace

FileSearchService::FileSearchService(std::unique_ptr<SemanticSearchService> semanticSearch,
                                     SpotlightMetadataService spotlightService,
                                     Clock clock)
    : m_semanticSearch(std::move(semanticSearch))
    , m_spotlightService(std::move(spotlightService))
    , m_clock(clock)
{}

QList<SearchResult> FileSearchService::search(const QString &query,
                                              const std::optional<ParsedSearchIntent> &intent,
                                              const QList<IndexedFile> &files) const
{
    const Instant now = m_clock.now();
    const SearchTerms terms = effectiveTerms(query, intent, now);
    if (terms.isEmpty())
        return {};

    QHash<QString, double> semanticScores;
    for (const SemanticMatch &match : m_semanticSearch->search(
             query, files, FileScorer::kSemanticThreshold, kMostSemanticMatches))
        semanticScores.insert(match.file->path, match.score);

    FileScorer scorer(terms, std::move(semanticScores), now);
    std::vector<Ranked> ranked;
    for (qsizetype i = 0; i < files.size(); ++i) {
        FileScore score = scorer.score(files[i]);
        if (score.points > 0)
            ranked.push_back({i, std::move(score)});
    }
    const auto kept = std::min(kMostResults, ranked.size());
    const auto end = ranked.begin() + static_cast<std::ptrdiff_t>(kept);
    std::ranges::partial_sort(ranked, end, [](const Ranked &a, const Ranked &b) {
        return std::pair(-a.score.points, a.position) < std::pair(-b.score.points, b.position);
    });

    QList<SearchResult> results;
    std::for_each(ranked.begin(), end, [&](const Ranked &entry) {
        const IndexedFile &file = files[entry.position];
        results.append({QUuid::createUuid(),
                        file,
                        entry.score.points,
                        entry.score.reasons,
                        generateSummary(file, entry.score.reasons, now)});
    });
    return results;
}

QString FileSearchService::generateSummary(const IndexedFile &file,
                                           const QList<MatchReason> &reasons,
                                           Instant now)
{
    QStringList sentences{u"Modified "_s + relativeTime(file->modifiedDate, now) + u'.'};
    if (reasons.contains(MatchReason::semantic))
        sentences.append(u"Semantically relevant to your query."_s);
    if (reasons.contains(MatchReason::download) && file->downloadSource)
        sentences.append(u"Downloaded from "_s + sourceName(*file->downloadSource) + u'.');
    if (reasons.contains(MatchReason::lastUsed) && file->lastUsedDate)
        sentences.append(u"Last opened "_s + relativeTime(*file->lastUsedDate, now) + u'.');

    QStringList labels;
    for (const MatchReason reason : reasons) {
        const bool hasOwnSentence = reason == MatchReason::semantic
                                    || reason == MatchReason::download
                                    || reason == MatchReason::lastUsed;
        if (!hasOwnSentence)
            labels.append(rawValue(reason).toLower());
    }
    if (!labels.isEmpty())
        sentences.append(u"Matched by "_s + labels.join(u", "_s) + u'.');
    return sentences.join(u' ');
}

} // namespace dugwise
