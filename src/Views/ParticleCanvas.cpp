// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/ParticleCanvas.h"

#include <utility>

namespace dugwise {

ParticleCanvas::ParticleCanvas(QQuickItem *parent)
    : DiscPainter(parent)
    , m_random(std::random_device()())
{
    connect(this, &ParticleCanvas::accentChanged, this, &QQuickItem::polish);
    connect(this, &ParticleCanvas::mouseLocationChanged, this, &QQuickItem::polish);
}

void ParticleCanvas::start()
{
    m_fieldSize = size();
    m_clock = {};
    m_seconds = 0;
    setParticles(initializeParticles(m_fieldSize, m_random));
}

void ParticleCanvas::advance(double seconds)
{
    QList<Particle> particles = m_particles;
    for (int due = m_clock.advance(seconds); due > 0; --due)
        particles = step(std::move(particles), m_fieldSize, m_mouseLocation, m_random);
    m_seconds += seconds;
    setParticles(std::move(particles));
}

void ParticleCanvas::spawnBurst(QPointF location)
{
    setParticles(dugwise::spawnBurst(m_particles, location, m_random));
}

QList<Disc> ParticleCanvas::discs() const
{
    return particleDiscs(m_particles, m_seconds, m_mouseLocation, m_accent);
}

void ParticleCanvas::componentComplete()
{
    DiscPainter::componentComplete();
    if (isVisible())
        start();
}

void ParticleCanvas::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    DiscPainter::geometryChange(newGeometry, oldGeometry);
    const bool standsStill = m_seconds == 0;
    if (isComponentComplete() && isVisible() && standsStill)
        start(); // a layout finds its sizes after its items are made
}

void ParticleCanvas::itemChange(ItemChange change, const ItemChangeData &value)
{
    DiscPainter::itemChange(change, value);
    if (change != ItemVisibleHasChanged || !isComponentComplete())
        return;
    if (isVisible())
        start();
    else
        setParticles({});
}

void ParticleCanvas::setParticles(QList<Particle> particles)
{
    const bool countChanges = particles.size() != m_particles.size();
    m_particles = std::move(particles);
    polish();
    if (countChanges)
        Q_EMIT countChanged();
}

} // namespace dugwise
