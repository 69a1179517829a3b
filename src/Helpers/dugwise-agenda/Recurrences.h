// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Helpers/dugwise-agenda/Zones.h"

#include <cstdint>
#include <string>
#include <vector>

namespace dugwise {

struct Occurrences
{
    std::vector<std::int64_t> starts;
    bool areAll = true; ///< else there may be more
};

/// When a recurring event starts within a span, in order (RFC 5545, 3.8.5): its start, and what
/// RRULE and RDATE add to it, without what EXDATE and EXRULE take away; all of them content lines.
/// Times are seconds, as Moment has them. At most 5,000, and what a tenth of a second finds.
[[nodiscard]] Occurrences occurrences(const std::string &startLine,
                                      const std::vector<std::string> &recurrences,
                                      const Zones &zones,
                                      std::int64_t earliest,
                                      std::int64_t latest);

} // namespace dugwise
