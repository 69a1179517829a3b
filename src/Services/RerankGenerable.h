// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Generable.h"

namespace dugwise {

/// The order in which a language model wants to see the results that it was shown.
struct RerankGenerable
{
    static constexpr QLatin1StringView kName{"RerankGenerable"};
    static constexpr QLatin1StringView kDescription{"Re-ranked search results by relevance"};

    QList<qint64> rankedIndices; ///< counted from 0; may hold anything

    [[nodiscard]] static constexpr auto properties()
    {
        using Text = QLatin1StringView;
        return std::tuple(GeneratedProperty<RerankGenerable, QList<qint64>>{
            Text("rankedIndices"),
            Text("The indices of results reordered by relevance to the query, most relevant first. "
                 "Use 0-based indexing."),
            &RerankGenerable::rankedIndices,
            10});
    }
};

} // namespace dugwise
