// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

namespace dugwise::DateIntentParser {

/// A closed span of time; `start` is never after `end`.
struct DateRange
{
    Instant start;
    Instant end;

    [[nodiscard]] constexpr bool contains(Instant time) const
    {
        return start <= time && time <= end;
    }

    bool operator==(const DateRange &) const = default;
};

} // namespace dugwise::DateIntentParser
