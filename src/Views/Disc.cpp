// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Disc.h"

#include <QPainter>
#include <QRadialGradient>
#include <QRect>

#include <algorithm>

namespace dugwise {

namespace {

QBrush brushOf(const Disc &disc)
{
    if (disc.stops.size() == 1)
        return disc.stops.first().second;
    QRadialGradient gradient(disc.center, disc.gradientRadius);
    gradient.setStops(disc.stops);
    return gradient;
}

/// Whether there is nothing left of its colour at its edge, and so nothing to smooth there.
bool isGlow(const Disc &disc)
{
    return disc.stops.last().second.alpha() == 0 && disc.gradientRadius == disc.radius;
}

void paintGlow(QPainter &painter, const Disc &disc)
{
    // Less than the rows of one fill that Qt would share out among threads, which costs more than
    // the filling.
    constexpr int rowsOfFill = 64;
    const QPointF corner(disc.radius, disc.radius);
    const QRect square = QRectF(disc.center - corner, disc.center + corner).toAlignedRect();
    const QBrush brush = brushOf(disc);
    for (int y = square.top(); y <= square.bottom(); y += rowsOfFill) {
        const int rows = std::min(rowsOfFill, square.bottom() + 1 - y);
        painter.fillRect(square.left(), y, square.width(), rows, brush);
    }
}

void paintToEdge(QPainter &painter, const Disc &disc)
{
    painter.setBrush(brushOf(disc));
    painter.drawEllipse(disc.center, disc.radius, disc.radius);
}

} // namespace

void paintDiscs(QPainter &painter, const QList<Disc> &discs)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (const Disc &disc : discs) {
        painter.setOpacity(disc.opacity);
        if (isGlow(disc))
            paintGlow(painter, disc);
        else
            paintToEdge(painter, disc);
    }
}

} // namespace dugwise
