// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"

#include <QList>

#include <array>

namespace dugwise {

/// One ranked file hit.
struct SearchResult
{
    /// A kind of evidence that a file matched.
    enum class MatchReason {
        filename,
        content,
        folder,
        recency,
        fileType,
        semantic,
        download,
        lastUsed,
        calendarAnchor,
    };

    QUuid id;                        ///< random, given when the result is made
    IndexedFile file;                ///< the file that matched
    double relevanceScore = 0;       ///< points given by the file search
    QList<MatchReason> matchReasons; ///< in the order in which they were found
    QString summary;                 ///< one line, shown on the card

    bool operator==(const SearchResult &) const = default;
};

[[nodiscard]] size_t qHash(const SearchResult &result, size_t seed = 0);

/// Every reason, in declaration order.
inline constexpr std::array kAllMatchReasons{
    SearchResult::MatchReason::filename,
    SearchResult::MatchReason::content,
    SearchResult::MatchReason::folder,
    SearchResult::MatchReason::recency,
    SearchResult::MatchReason::fileType,
    SearchResult::MatchReason::semantic,
    SearchResult::MatchReason::download,
    SearchResult::MatchReason::lastUsed,
    SearchResult::MatchReason::calendarAnchor,
};

/// The label that people see, which is also how the reason is written.
[[nodiscard]] QString rawValue(SearchResult::MatchReason reason);
/// The reason with that label, matched exactly; none for any other text.
[[nodiscard]] std::optional<SearchResult::MatchReason> matchReasonFromRawValue(QStringView label);
/// Name of the system symbol shown beside the reason.
[[nodiscard]] QString iconName(SearchResult::MatchReason reason);

} // namespace dugwise
