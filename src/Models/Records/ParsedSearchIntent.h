// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/DateRange.h"
#include "Models/Records/FileType.h"

#include <QStringList>

#include <optional>

namespace dugwise {

/// The structured form of one request.
struct ParsedSearchIntent
{
    QStringList keywords;             ///< content words, expected in lower case
    QStringList phrases;              ///< to be found as a whole
    std::optional<FileType> fileType; ///< none: any kind
    bool includeScreenshots = false;
    std::optional<DateIntentParser::DateRange> dateRange; ///< modified, downloaded or opened then
    QStringList personNames;
    bool wantsCrossApp = false; ///< mail, messages or calendar are wanted too

    bool operator==(const ParsedSearchIntent &) const = default;
};

} // namespace dugwise
