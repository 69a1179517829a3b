// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/DiscPainter.h"
#include "Views/ParticleField.h"

namespace dugwise {

/// The particles of AmbientParticleView and their picture. They are there as long as it is visible,
/// and stand still until advance() is called.
class ParticleCanvas : public dugwise::DiscPainter
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor accent MEMBER m_accent NOTIFY accentChanged)
    /// (0, 0) while the pointer is elsewhere.
    Q_PROPERTY(QPointF mouseLocation MEMBER m_mouseLocation NOTIFY mouseLocationChanged)
    /// How many particles are alive, of all kinds.
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    explicit ParticleCanvas(QQuickItem *parent = nullptr);

    [[nodiscard]] int count() const { return static_cast<int>(m_particles.size()); }

    /// Begins anew, at the size of this moment.
    Q_INVOKABLE void start();
    /// So many seconds have passed.
    Q_INVOKABLE void advance(double seconds);
    Q_INVOKABLE void spawnBurst(QPointF location);

Q_SIGNALS:
    void accentChanged();
    void mouseLocationChanged();
    void countChanged();

protected:
    [[nodiscard]] QList<Disc> discs() const override;
    void componentComplete() override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    void setParticles(QList<Particle> particles);

    RandomSource m_random;
    QList<Particle> m_particles;
    StepClock m_clock;
    QSizeF m_fieldSize; ///< in which the particles move, whatever the item's is by now
    double m_seconds = 0;
    QColor m_accent;
    QPointF m_mouseLocation;
};

} // namespace dugwise
