// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Disc.h"

#include <QQuickPaintedItem>
#include <QtQmlIntegration>

namespace dugwise {

/// An item that shows a list of discs. It takes no clicks.
class DiscPainter : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    void paint(QPainter *painter) final;

protected:
    /// What to show at this moment. Asked for once before the next frame after polish().
    [[nodiscard]] virtual QList<Disc> discs() const = 0;
    void updatePolish() override;

private:
    QList<Disc> m_discs;
};

} // namespace dugwise
