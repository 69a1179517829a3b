// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/Records/SearchResult.h"

#include "Models/Records/Hash.h"

using namespace Qt::StringLiterals;

namespace dugwise {

using MatchReason = SearchResult::MatchReason;

size_t qHash(const SearchResult &result, size_t seed)
{
    return qHashMulti(seed,
                      result.id,
                      result.file,
                      result.relevanceScore,
                      hashOf(result.matchReasons),
                      result.summary);
}

QString rawValue(MatchReason reason)
{
    switch (reason) {
    case MatchReason::filename:
        return u"Filename match"_s;
    case MatchReason::content:
        return u"Content match"_s;
    case MatchReason::folder:
        return u"Folder match"_s;
    case MatchReason::recency:
        return u"Recently modified"_s;
    case MatchReason::fileType:
        return u"File type match"_s;
    case MatchReason::semantic:
        return u"Semantic match"_s;
    case MatchReason::download:
        return u"Download info"_s;
    case MatchReason::lastUsed:
        return u"Recently used"_s;
    case MatchReason::calendarAnchor:
        return u"Calendar context"_s;
    }
    Q_UNREACHABLE();
}

std::optional<MatchReason> matchReasonFromRawValue(QStringView label)
{
    for (const MatchReason reason : kAllMatchReasons) {
        if (rawValue(reason) == label)
            return reason;
    }
    return std::nullopt;
}

QString iconName(MatchReason reason)
{
    switch (reason) {
    case MatchReason::filename:
        return u"doc.text.magnifyingglass"_s;
    case MatchReason::content:
        return u"text.magnifyingglass"_s;
    case MatchReason::folder:
        return u"folder"_s;
    case MatchReason::recency:
        return u"clock"_s;
    case MatchReason::fileType:
        return u"doc"_s;
    case MatchReason::semantic:
        return u"brain"_s;
    case MatchReason::download:
        return u"arrow.down.circle"_s;
    case MatchReason::lastUsed:
        return u"clock.arrow.circlepath"_s;
    case MatchReason::calendarAnchor:
        return u"calendar"_s;
    }
    Q_UNREACHABLE();
}

} // namespace dugwise
