// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/LocalTime.h"

#include <algorithm>
#include <cmath>

namespace dugwise {

QDateTime localTime(Instant instant)
{
    // The years 1 to 9999: a file may claim any date, and calendars end somewhere.
    constexpr double kFirst = -62'135'596'800;
    constexpr double kLast = 253'402'214'400;
    const double seconds = std::clamp(std::floor(instant.unixSeconds()), kFirst, kLast);
    return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(seconds));
}

Instant startOfDay(QDate date)
{
    // Of two midnights Qt takes the second.
    constexpr qint64 kSmallestStep = 1800; // seconds
    QDateTime start = date.startOfDay();
    while (start.isValid() && start.addSecs(-kSmallestStep).date() == date)
        start = start.addSecs(-kSmallestStep);
    return instant(start);
}

Instant calendarTimeBefore(Instant now, const CalendarSpan &span)
{
    const QDateTime whole = localTime(now);
    const double fraction = now.seconds - instant(whole).seconds;
    const QDateTime start = whole.addYears(-span.years).addMonths(-span.months).addDays(-span.days);
    return {instant(start).seconds + fraction};
}

Instant instant(const QDateTime &dateTime)
{
    return Instant::fromUnix(static_cast<double>(dateTime.toMSecsSinceEpoch()) / 1000);
}

} // namespace dugwise
