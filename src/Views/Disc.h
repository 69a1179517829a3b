// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QBrush>
#include <QList>
#include <QPointF>

class QPainter;

namespace dugwise {

/// A filled circle of a picture. Lengths are in device-independent pixels.
struct Disc
{
    QPointF center;
    double radius = 0;
    /// 0 to 1, on top of what the colours have of their own.
    double opacity = 1;
    /// From the centre (0) to `gradientRadius` (1). One stop alone fills the disc evenly.
    QGradientStops stops;
    double gradientRadius = radius;
};

/// Paints them in their order, smoothed.
void paintDiscs(QPainter &painter, const QList<Disc> &discs);

} // namespace dugwise
