// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"

#include <QList>

namespace dugwise {

/// One file with how near it is in meaning to a request.
struct SemanticMatch
{
    IndexedFile file;
    double score = 0; ///< from 0 to 1
};

/// Scores files by meaning. Without a sentence embedding, as here, there is nothing to compare
/// with and nothing is found.
class SemanticSearchService
{
public:
    SemanticSearchService() = default;
    Q_DISABLE_COPY_MOVE(SemanticSearchService)
    virtual ~SemanticSearchService() = default;

    /// Best first, at most `maxResults`, none below `threshold`; callable from any thread.
    [[nodiscard]] virtual QList<SemanticMatch> search(const QString &query,
                                                      const QList<IndexedFile> &files,
                                                      double threshold,
                                                      qsizetype maxResults) const;
};

} // namespace dugwise
