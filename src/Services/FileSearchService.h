// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/ParsedSearchIntent.h"
#include "Models/Records/SearchResult.h"
#include "Services/SemanticSearchService.h"
#include "Services/SpotlightMetadataService.h"
#include "Utilities/Clock.h"

#include <memory>

namespace dugwise {

/// Ranks files against one request. Keeps nothing between calls.
class FileSearchService
{
public:
    FileSearchService(std::unique_ptr<SemanticSearchService> semanticSearch,
                      SpotlightMetadataService spotlightService,
                      Clock clock);

    /// At most 15 results, best first; equal scores keep the order of `files`. With an intent its
    /// terms are used, without one those of the request's text. `files` holds no path twice.
    /// Callable from any thread.
    [[nodiscard]] QList<SearchResult> search(const QString &query,
                                             const std::optional<ParsedSearchIntent> &intent,
                                             const QList<IndexedFile> &files) const;

private:
    [[nodiscard]] static QString generateSummary(const IndexedFile &file,
                                                 const QList<SearchResult::MatchReason> &reasons,
                                                 Instant now);

    std::unique_ptr<SemanticSearchService> m_semanticSearch;
    SpotlightMetadataService m_spotlightService;
    Clock m_clock;
};

} // namespace dugwise
