// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/FlowLayout.h"

#include <algorithm>

namespace dugwise {

FlowLayout::Arrangement FlowLayout::layout(qreal width, const QList<QSizeF> &sizes, qreal spacing)
{
    Arrangement arrangement;
    QPointF at;
    qreal lineHeight = 0;
    qreal widest = 0;
    for (const QSizeF &size : sizes) {
        if (at.x() > 0 && at.x() + size.width() > width) {
            at = {0, at.y() + lineHeight + spacing};
            lineHeight = 0;
        }
        arrangement.positions.append(at);
        lineHeight = std::max(lineHeight, size.height());
        at.rx() += size.width() + spacing;
        widest = std::max(widest, at.x());
    }
    arrangement.size = {widest, at.y() + lineHeight};
    return arrangement;
}

void FlowLayout::setSpacing(qreal spacing)
{
    if (spacing == m_spacing)
        return;
    m_spacing = spacing;
    polish();
    Q_EMIT spacingChanged();
}

void FlowLayout::updatePolish()
{
    QList<QQuickItem *> shown;
    QList<QSizeF> sizes;
    for (QQuickItem *const child : childItems()) {
        const QSizeF size(child->implicitWidth(), child->implicitHeight());
        if (!child->isVisible() || size.isEmpty()) // a Repeater has no size
            continue;
        shown.append(child);
        sizes.append(size);
    }
    const Arrangement arrangement = layout(widthValid() ? width() : 0, sizes, m_spacing);
    for (qsizetype i = 0; i < shown.size(); ++i)
        shown[i]->setPosition(arrangement.positions[i]);
    setImplicitSize(arrangement.size.width(), arrangement.size.height());
}

void FlowLayout::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemChildAddedChange) {
        connect(data.item, &QQuickItem::implicitWidthChanged, this, &QQuickItem::polish);
        connect(data.item, &QQuickItem::implicitHeightChanged, this, &QQuickItem::polish);
        connect(data.item, &QQuickItem::visibleChanged, this, &QQuickItem::polish);
        polish();
    } else if (change == ItemChildRemovedChange) {
        data.item->disconnect(this);
        polish();
    }
}

void FlowLayout::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.width() != oldGeometry.width())
        polish();
}

void FlowLayout::componentComplete()
{
    QQuickItem::componentComplete();
    polish();
}

} // namespace dugwise
