// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SparkleBursts.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace dugwise {

namespace {

constexpr double kSecondsSeen = 1;
constexpr int kDotsOfRing = 12;

void drawRing(QList<Disc> &discs, QPointF origin, double age, const QColor &accent)
{
    const double radius = 30 + 40 * age;
    for (int dot = 0; dot < kDotsOfRing; ++dot) {
        const double angle = dot * 2 * std::numbers::pi / kDotsOfRing;
        discs.append({origin + radius * QPointF(std::cos(angle), std::sin(angle)),
                      2 * (1 - age),
                      0.8 * (1 - age),
                      {{0, accent}}});
    }
}

} // namespace

QList<BurstState> withoutOldBursts(QList<BurstState> bursts, double now)
{
    bursts.removeIf([now](const BurstState &burst) { return now - burst.time >= kBurstSeconds; });
    return bursts;
}

QList<Disc> burstDiscs(const QList<BurstState> &bursts, double now, const QColor &accent)
{
    QList<Disc> discs;
    for (const BurstState &burst : bursts) {
        const double age = now - burst.time;
        if (age < kSecondsSeen)
            drawRing(discs, burst.origin, age, accent);
    }
    return discs;
}

} // namespace dugwise
