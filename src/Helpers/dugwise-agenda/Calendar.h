// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Helpers/dugwise-agenda/Zones.h"

#include <string>
#include <string_view>
#include <vector>

namespace dugwise {

/// What counts here of a calendar's document (iCalendar, RFC 5545, and vCalendar 1.0).
struct Calendar
{
    /// A VEVENT; times are kept as their content lines.
    struct Event
    {
        std::string uid;
        std::string title;
        std::string notes;
        std::string location;
        std::string start;
        std::string end;
        std::string duration;
        std::string recurrenceId;             ///< of one that stands in for an occurrence
        std::vector<std::string> recurrences; ///< RRULE, RDATE, EXDATE, EXRULE
        bool isCancelled = false;

        /// Whether it stands in for all later occurrences as well, moved and shaped alike
        /// (RFC 5545, 3.2.13).
        [[nodiscard]] bool isThisAndFuture() const;
    };

    /// Events that are not complete are left out.
    [[nodiscard]] static Calendar parse(std::string_view document);

    Zones zones;
    std::vector<Event> events;
};

} // namespace dugwise
