// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Disc.h"

#include <QColor>
#include <QUuid>

/// The rings of dots that clicks leave behind. Times are in seconds on one clock.
namespace dugwise {

struct BurstState
{
    QUuid id;
    QPointF origin;
    double time = 0;
};

/// After so long it is no more; it has been out of sight for a while then.
constexpr double kBurstSeconds = 1.2;

[[nodiscard]] QList<BurstState> withoutOldBursts(QList<BurstState> bursts, double now);

/// What they look like now.
[[nodiscard]] QList<Disc>
burstDiscs(const QList<BurstState> &bursts, double now, const QColor &accent);

} // namespace dugwise
