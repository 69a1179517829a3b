// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/SemanticSearchService.h"

namespace dugwise {

QList<SemanticMatch> SemanticSearchService::search(const QString & /*query*/,
                                                   const QList<IndexedFile> & /*files*/,
                                                   double /*threshold*/,
                                                   qsizetype /*maxResults*/) const
{
    return {};
}

} // namespace dugwise
