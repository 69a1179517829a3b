// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/GlowDisc.h"

#include <algorithm>

namespace dugwise {

GlowDisc::GlowDisc(QQuickItem *parent)
    : DiscPainter(parent)
{
    connect(this, &GlowDisc::colorChanged, this, &QQuickItem::polish);
}

QList<Disc> GlowDisc::discs() const
{
    QColor clear = m_color;
    clear.setAlphaF(0);
    const double radius = std::min(width(), height()) / 2;
    return {{boundingRect().center(), radius, 1, {{0, m_color}, {1, clear}}}};
}

void GlowDisc::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    DiscPainter::geometryChange(newGeometry, oldGeometry);
    polish();
}

} // namespace dugwise
