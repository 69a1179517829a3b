// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Disc.h"
#include "Views/Particle.h"

#include <QColor>
#include <QSizeF>

#include <random>

/// The particles behind the welcome: how they come, move, go and look. Values in, values out.
///
/// A pointer at (0, 0) is one that is not over the view.
namespace dugwise {

using RandomSource = std::mt19937;

/// How many of a kind are kept alive.
constexpr int kParticleCount = 60;
constexpr int kSparkleCount = 15;
/// Orbs never die.
constexpr int kOrbCount = 6;
constexpr double kStepSeconds = 0.016;

[[nodiscard]] Particle makeAmbientParticle(QSizeF size, RandomSource &random);
[[nodiscard]] Particle makeSparkle(QSizeF size, RandomSource &random);
[[nodiscard]] Particle makeOrb(QSizeF size, RandomSource &random);

/// The field of a view of this size as it begins.
[[nodiscard]] QList<Particle> initializeParticles(QSizeF size, RandomSource &random);

/// The particles and the twenty trails that a click throws out.
[[nodiscard]] QList<Particle>
spawnBurst(QList<Particle> particles, QPointF location, RandomSource &random);

/// The particles one step later, in their order, with new ones for those that died.
[[nodiscard]] QList<Particle>
step(QList<Particle> particles, QSizeF size, QPointF mouseLocation, RandomSource &random);

/// What they look like `seconds` into the motion, the glow around the pointer last.
[[nodiscard]] QList<Disc> particleDiscs(const QList<Particle> &particles,
                                        double seconds,
                                        QPointF mouseLocation,
                                        const QColor &accent);

/// Tells how many steps are due, however long the frames of the display are.
class StepClock
{
public:
    /// Steps due now that so many seconds more have passed. A pause is not made up for.
    [[nodiscard]] int advance(double seconds);

private:
    double m_due = 0;
};

} // namespace dugwise
