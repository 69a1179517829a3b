// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/SearchResult.h"
#include "Services/SpotlightMetadataService.h"

namespace dugwise {

/// The hits that are not among the results, as files that can be scored.
[[nodiscard]] QList<IndexedFile>
filesBeyond(const QList<SearchResult> &results, const QList<SpotlightSearchHit> &hits, Instant now);

/// What is shown of hits in which the scoring saw nothing: the first ten.
[[nodiscard]] QList<SearchResult> unscoredResults(const QList<IndexedFile> &files);

/// The twenty of highest relevance, best first; equal ones keep their order.
[[nodiscard]] QList<SearchResult> bestResults(QList<SearchResult> results);

} // namespace dugwise
