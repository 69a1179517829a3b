// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/DiscPainter.h"

#include <QColor>

namespace dugwise {

/// A glow that fills the item: its colour in the middle, nothing left of it at the edge.
class GlowDisc : public dugwise::DiscPainter
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY colorChanged)

public:
    explicit GlowDisc(QQuickItem *parent = nullptr);

Q_SIGNALS:
    void colorChanged();

protected:
    [[nodiscard]] QList<Disc> discs() const override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;

private:
    QColor m_color;
};

} // namespace dugwise
