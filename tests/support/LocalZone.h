// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

#include <QDateTime>

#include <time.h>

/// Moments, and the time zone in which the program tells them.
namespace dugwise::test {

inline Instant at(const QString &iso)
{
    const QDateTime time = QDateTime::fromString(iso, Qt::ISODateWithMs);
    return Instant::fromUnix(static_cast<double>(time.toMSecsSinceEpoch()) / 1000);
}

inline void setZone(const QString &zone)
{
    qputenv("TZ", zone.toLatin1());
    tzset();
}

} // namespace dugwise::test
