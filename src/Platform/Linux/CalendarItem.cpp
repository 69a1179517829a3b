// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/CalendarItem.h"

#include "Utilities/LocalTime.h"

namespace dugwise {

namespace {

constexpr qint64 kDay = 86'400;

} // namespace

std::optional<CalendarItem> CalendarItem::fromRecord(const QStringList &fields)
{
    if (fields.size() != 8)
        return std::nullopt;
    bool isNumber = false;
    const qint64 start = fields[2].toLongLong(&isNumber);
    if (!isNumber)
        return std::nullopt;
    bool hasLength = false;
    const qint64 length = fields[3].toLongLong(&hasLength);
    const bool isRecurring = !fields[7].isEmpty();
    return CalendarItem{
        .uid = fields[0],
        .title = fields[4],
        .notes = fields[5],
        .location = fields[6],
        .isFloating = !fields[1].isEmpty(),
        .length = hasLength ? std::optional(length) : std::nullopt,
        .starts = isRecurring ? QList<qint64>() : QList<qint64>{start},
        .recurring = fields[7].toUtf8(),
        .firstStart = start,
    };
}

Instant CalendarItem::instant(qint64 time) const
{
    if (!isFloating)
        return Instant::fromUnix(static_cast<double>(time));
    const qint64 second = ((time % kDay) + kDay) % kDay;
    const QDate day = QDate(1970, 1, 1).addDays((time - second) / kDay);
    return dugwise::instant(
        QDateTime(day, QTime::fromMSecsSinceStartOfDay(static_cast<int>(second) * 1000)));
}

} // namespace dugwise
