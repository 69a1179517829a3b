// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Helpers/dugwise-agenda/Calendar.h"

#include <cstdint>
#include <vector>

namespace dugwise {

struct Occurrences
{
    std::vector<std::int64_t> starts;
    bool areAll = true; ///< else there may be more
};

/// When a calendar's first event starts within a span, in order (RFC 5545, 3.8.5): its start, and
/// what RRULE and RDATE add to it, without what EXDATE and EXRULE take away; an EXDATE with a RANGE
/// takes all later ones away as well. Where a second event stands in for an occurrence of the first
/// and all later ones, when it starts: at that one and those after it, each moved as far as that
/// one (3.8.4.4). Times are seconds, as Moment has them. At most 5,000, and what a tenth of a
/// second finds.
[[nodiscard]] Occurrences
occurrences(const Calendar &calendar, std::int64_t earliest, std::int64_t latest);

} // namespace dugwise
