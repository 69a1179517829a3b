// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/LocalTime.h"

#include <cmath>

namespace dugwise {

QDateTime localTime(Instant instant)
{
    return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(std::floor(instant.unixSeconds())));
}

Instant instant(const QDateTime &dateTime)
{
    return Instant::fromUnix(static_cast<double>(dateTime.toMSecsSinceEpoch()) / 1000);
}

} // namespace dugwise
