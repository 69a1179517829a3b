// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SparkleCanvas.h"

#include <QTimer>

#include <chrono>
#include <utility>

namespace dugwise {

SparkleCanvas::SparkleCanvas(QQuickItem *parent)
    : DiscPainter(parent)
{
    m_clock.start();
    connect(this, &SparkleCanvas::accentChanged, this, &QQuickItem::polish);
}

void SparkleCanvas::addBurst(QPointF origin)
{
    QList<BurstState> bursts = m_bursts;
    bursts.append({QUuid::createUuid(), origin, now()});
    setBursts(std::move(bursts));
    constexpr std::chrono::milliseconds life(static_cast<int>(kBurstSeconds * 1000));
    QTimer::singleShot(
        life, Qt::PreciseTimer, this, [this] { setBursts(withoutOldBursts(m_bursts, now())); });
}

QList<Disc> SparkleCanvas::discs() const
{
    return burstDiscs(m_bursts, now(), m_accent);
}

double SparkleCanvas::now() const
{
    return static_cast<double>(m_clock.nsecsElapsed()) / 1e9;
}

void SparkleCanvas::setBursts(QList<BurstState> bursts)
{
    m_bursts = std::move(bursts);
    polish();
    Q_EMIT countChanged();
}

} // namespace dugwise
