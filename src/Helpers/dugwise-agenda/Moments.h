// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Helpers/dugwise-agenda/ContentLines.h"
#include "Helpers/dugwise-agenda/Zones.h"

#include <cstdint>
#include <optional>

namespace dugwise {

/// A time as a calendar gives it.
struct Moment
{
    icaltimetype wall{};          ///< on the clocks of its zone; midnight of a date
    icaltimezone *zone = nullptr; ///< null when it is floating, or its zone not known

    [[nodiscard]] bool isDate() const { return wall.is_date != 0; }
    [[nodiscard]] bool isFloating() const { return zone == nullptr; }
    /// Seconds since 1970 UTC; of floating ones as if they were UTC.
    [[nodiscard]] std::int64_t seconds() const;
    [[nodiscard]] std::int64_t wallSeconds() const;
};

/// One of the values of DTSTART, DTEND, RDATE, EXDATE and RECURRENCE-ID. One in UTC that has a zone
/// too is meant as that time in that zone.
[[nodiscard]] std::optional<Moment>
parseMoment(const ContentLine &line, std::string_view value, const Zones &zones);

/// The same time, that much later on the same clocks.
[[nodiscard]] Moment moved(const Moment &moment, std::int64_t seconds);

/// The same time in another zone, or floating.
[[nodiscard]] icaltimetype wallIn(const Moment &moment, icaltimezone *zone);

/// Seconds between an event's start and its end, as it has one (RFC 5545, 3.6.1): the lines DTEND
/// or DURATION, empty where there are none.
[[nodiscard]] std::optional<std::int64_t> lengthOf(const Moment &start,
                                                   std::string_view endLine,
                                                   std::string_view durationLine,
                                                   const Zones &zones);

} // namespace dugwise
