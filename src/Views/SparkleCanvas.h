// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/DiscPainter.h"
#include "Views/SparkleBursts.h"

#include <QElapsedTimer>

namespace dugwise {

/// The bursts of SparkleArea and their picture, which stands still until refresh() is called.
class SparkleCanvas : public dugwise::DiscPainter
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor accent MEMBER m_accent NOTIFY accentChanged)
    /// How many bursts there are, those that have faded a moment ago among them.
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    explicit SparkleCanvas(QQuickItem *parent = nullptr);

    [[nodiscard]] int count() const { return static_cast<int>(m_bursts.size()); }

    /// Lets a ring go out from there, now.
    Q_INVOKABLE void addBurst(QPointF origin);
    Q_INVOKABLE void refresh() { polish(); }

Q_SIGNALS:
    void accentChanged();
    void countChanged();

protected:
    [[nodiscard]] QList<Disc> discs() const override;

private:
    [[nodiscard]] double now() const;
    void setBursts(QList<BurstState> bursts);

    QElapsedTimer m_clock;
    QList<BurstState> m_bursts;
    QColor m_accent;
};

} // namespace dugwise
