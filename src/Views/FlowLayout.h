// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QPointF>
#include <QQuickItem>
#include <QSizeF>
#include <QtQmlIntegration>

namespace dugwise {

/// Lays its children out from left to right in their natural (implicit) sizes, and goes on in a new
/// line where the next one would pass the item's width. Its implicit size is that of the
/// arrangement. Without a width of its own every child has a line to itself.
class FlowLayout : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /// The gap between items on a line and between lines, in pixels.
    Q_PROPERTY(qreal spacing READ spacing WRITE setSpacing NOTIFY spacingChanged)

public:
    struct Arrangement
    {
        QList<QPointF> positions; ///< of the items' top left corners, in their order
        /// Of all of it; the spacing behind the last item of the widest line counts.
        QSizeF size;
    };

    using QQuickItem::QQuickItem;

    /// Where items of these sizes go in an area of that width. One that is wider than the area has
    /// a line for itself and reaches beyond it.
    [[nodiscard]] static Arrangement layout(qreal width, const QList<QSizeF> &sizes, qreal spacing);

    [[nodiscard]] qreal spacing() const { return m_spacing; }
    void setSpacing(qreal spacing);

Q_SIGNALS:
    void spacingChanged();

protected:
    void updatePolish() override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void componentComplete() override;

private:
    qreal m_spacing = 0;
};

} // namespace dugwise
