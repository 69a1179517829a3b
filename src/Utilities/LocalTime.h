// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

#include <QDateTime>

namespace dugwise {

/// An instant on the local calendar, kept to the whole second below it.
[[nodiscard]] QDateTime localTime(Instant instant);

/// When a local day begins: its first midnight where clocks are set back over it, the first time
/// that it has where they are set forward.
[[nodiscard]] Instant startOfDay(QDate date);

/// A length of time on the calendar.
struct CalendarSpan
{
    int days = 0;
    int months = 0;
    int years = 0;
};

/// The same local time of day that far back on the calendar, to the fraction of a second.
[[nodiscard]] Instant calendarTimeBefore(Instant now, const CalendarSpan &span);

/// The instant of a local date and time.
[[nodiscard]] Instant instant(const QDateTime &dateTime);

} // namespace dugwise
