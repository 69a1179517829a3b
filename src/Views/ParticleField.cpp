// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/ParticleField.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace dugwise {

namespace {

constexpr double kLifePerStep = 1.0 / 60;
constexpr double kOrbLife = 100;
constexpr int kTrailsOfBurst = 20;
constexpr double kReachOfPointer = 150;
constexpr double kPullOfPointer = 0.05;
constexpr int kMostStepsOfFrame = 4;

double between(double low, double high, RandomSource &random)
{
    return std::uniform_real_distribution(low, high)(random);
}

void bounce(Particle &orb, QSizeF size)
{
    if (orb.x < 0 || orb.x > size.width())
        orb.vx = -orb.vx;
    if (orb.y < 0 || orb.y > size.height())
        orb.vy = -orb.vy;
}

void pull(Particle &particle, QPointF mouseLocation)
{
    const double dx = mouseLocation.x() - particle.x;
    const double dy = mouseLocation.y() - particle.y;
    const double distance = std::hypot(dx, dy);
    if (distance <= 1 || distance >= kReachOfPointer)
        return;
    particle.vx += kPullOfPointer * dx / distance;
    particle.vy += kPullOfPointer * dy / distance;
}

void move(Particle &particle, QSizeF size, QPointF mouseLocation)
{
    particle.x += particle.vx;
    particle.y += particle.vy;
    particle.life -= kLifePerStep;
    switch (particle.kind) {
    case ParticleKind::ambient:
        if (!mouseLocation.isNull())
            pull(particle, mouseLocation);
        break;
    case ParticleKind::sparkle:
        break;
    case ParticleKind::orb:
        bounce(particle, size);
        particle.life = kOrbLife;
        break;
    case ParticleKind::trail:
        particle.vx *= 0.96;
        particle.vy *= 0.96;
        particle.size *= 0.98;
        break;
    }
}

/// Appends what `make` makes until there are `count` of the kind.
void fill(QList<Particle> &particles,
          ParticleKind kind,
          int count,
          Particle (*make)(QSizeF, RandomSource &),
          QSizeF size,
          RandomSource &random)
{
    for (auto alive = std::ranges::count(particles, kind, &Particle::kind); alive < count; ++alive)
        particles.append(make(size, random));
}

QColor colorOf(const Particle &particle, float saturation, float brightness)
{
    return QColor::fromHsvF(static_cast<float>(particle.hue), saturation, brightness);
}

QColor faded(QColor color, float opacity)
{
    color.setAlphaF(opacity);
    return color;
}

/// A disc that fades from `opacity` of its colour in the centre to nothing at its edge.
Disc glow(QPointF center, double radius, double opacity, const QColor &color, float colorOpacity)
{
    return {center, radius, opacity, {{0, faded(color, colorOpacity)}, {1, faded(color, 0)}}};
}

void drawAmbient(QList<Disc> &discs, const Particle &particle, double seconds, double fade)
{
    const double pulse = (std::sin(2 * seconds + 15 * particle.hue) + 1) / 2;
    discs.append({{particle.x, particle.y},
                  particle.size * (0.8 + 0.4 * pulse) / 2,
                  (0.4 + 0.3 * pulse) * fade,
                  {{0, colorOf(particle, 0.5F, 0.95F)}}});
}

void drawSparkle(QList<Disc> &discs, const Particle &particle, double seconds, double fade)
{
    const double twinkle = (std::sin(4 * seconds + 20 * particle.hue) + 1) / 2;
    const double opacity = (0.3 + 0.7 * twinkle) * fade;
    const QPointF center(particle.x, particle.y);
    discs.append({center, particle.size / 2, opacity, {{0, Qt::white}}});
    discs.append(glow(center, 1.5 * particle.size, 0.4 * opacity, Qt::white, 0.6F));
}

void drawOrb(QList<Disc> &discs, const Particle &particle, double seconds, double fade)
{
    const QPointF center(particle.x + 8 * std::sin(0.5 * seconds + 10 * particle.hue),
                         particle.y + 6 * std::cos(0.3 * seconds + 7 * particle.hue));
    const QColor color = colorOf(particle, 0.6F, 0.9F);
    discs.append(glow(center, 2 * particle.size, 0.15 * fade, color, 0.3F));
    discs.append({center, particle.size / 2, 0.5 * fade, {{0, color}}});
}

void drawTrail(QList<Disc> &discs, const Particle &particle, double fade)
{
    const QColor color = colorOf(particle, 0.7F, 1);
    // The gradient goes on beyond the edge: of its way to nothing, half is seen.
    discs.append({{particle.x, particle.y},
                  particle.size / 2,
                  fade,
                  {{0, color}, {0.5, faded(color, 0.3F)}, {1, faded(color, 0)}},
                  particle.size});
}

void drawParticle(QList<Disc> &discs, const Particle &particle, double seconds)
{
    const double fade = particle.opacity * particle.life / particle.maxLife;
    switch (particle.kind) {
    case ParticleKind::ambient:
        return drawAmbient(discs, particle, seconds, fade);
    case ParticleKind::sparkle:
        return drawSparkle(discs, particle, seconds, fade);
    case ParticleKind::orb:
        return drawOrb(discs, particle, seconds, fade);
    case ParticleKind::trail:
        return drawTrail(discs, particle, fade);
    }
}

void drawMouseGlow(QList<Disc> &discs, QPointF mouseLocation, const QColor &accent)
{
    if (!mouseLocation.isNull())
        discs.append(glow(mouseLocation, 120, 0.06, accent, 0.4F));
}

} // namespace

Particle makeAmbientParticle(QSizeF size, RandomSource &random)
{
    return {.x = between(0, std::max(1.0, size.width()), random),
            .y = between(0, std::max(1.0, size.height()), random),
            .vx = between(-0.3, 0.3, random),
            .vy = between(-0.5, -0.1, random),
            .size = between(2, 5, random),
            .opacity = between(0.2, 0.6, random),
            .life = between(3, 8, random),
            .maxLife = between(3, 8, random),
            .hue = between(0.48, 0.55, random),
            .kind = ParticleKind::ambient};
}

Particle makeSparkle(QSizeF size, RandomSource &random)
{
    return {.x = between(0, std::max(1.0, size.width()), random),
            .y = between(0, std::max(1.0, size.height()), random),
            .size = between(1.5, 3, random),
            .opacity = between(0.3, 0.8, random),
            .life = between(2, 6, random),
            .maxLife = between(2, 6, random),
            .kind = ParticleKind::sparkle};
}

Particle makeOrb(QSizeF size, RandomSource &random)
{
    return {.x = between(0.1 * size.width(), 0.9 * size.width(), random),
            .y = between(0.1 * size.height(), 0.9 * size.height(), random),
            .vx = between(-0.2, 0.2, random),
            .vy = between(-0.15, 0.15, random),
            .size = between(20, 45, random),
            .opacity = between(0.08, 0.2, random),
            .life = kOrbLife,
            .maxLife = kOrbLife,
            .hue = between(0.45, 0.58, random),
            .kind = ParticleKind::orb};
}

QList<Particle> initializeParticles(QSizeF size, RandomSource &random)
{
    QList<Particle> particles;
    fill(particles, ParticleKind::ambient, kParticleCount, makeAmbientParticle, size, random);
    fill(particles, ParticleKind::sparkle, kSparkleCount, makeSparkle, size, random);
    fill(particles, ParticleKind::orb, kOrbCount, makeOrb, size, random);
    return particles;
}

QList<Particle> spawnBurst(QList<Particle> particles, QPointF location, RandomSource &random)
{
    for (int i = 0; i < kTrailsOfBurst; ++i) {
        const double angle = between(0, 2 * std::numbers::pi, random);
        const double speed = between(1, 4, random);
        particles.append({.x = location.x(),
                          .y = location.y(),
                          .vx = std::cos(angle) * speed,
                          .vy = std::sin(angle) * speed,
                          .size = between(2, 6, random),
                          .opacity = between(0.6, 1, random),
                          .life = between(0.5, 1.5, random),
                          .maxLife = between(0.5, 1.5, random),
                          .hue = between(0.45, 0.58, random),
                          .kind = ParticleKind::trail});
    }
    return particles;
}

QList<Particle>
step(QList<Particle> particles, QSizeF size, QPointF mouseLocation, RandomSource &random)
{
    for (Particle &particle : particles)
        move(particle, size, mouseLocation);
    particles.removeIf([](const Particle &particle) { return particle.life <= 0; });
    fill(particles, ParticleKind::ambient, kParticleCount, makeAmbientParticle, size, random);
    fill(particles, ParticleKind::sparkle, kSparkleCount, makeSparkle, size, random);
    return particles;
}

QList<Disc> particleDiscs(const QList<Particle> &particles,
                          double seconds,
                          QPointF mouseLocation,
                          const QColor &accent)
{
    QList<Disc> discs;
    for (const Particle &particle : particles) {
        if (particle.life > 0)
            drawParticle(discs, particle, seconds);
    }
    drawMouseGlow(discs, mouseLocation, accent);
    for (Disc &disc : discs)
        disc.opacity =
            std::min(1.0, disc.opacity); // whoever outlives maxLife fades in from above 1
    return discs;
}

int StepClock::advance(double seconds)
{
    m_due += seconds;
    const double steps = std::floor(m_due / kStepSeconds);
    if (steps > kMostStepsOfFrame) {
        m_due = 0;
        return kMostStepsOfFrame;
    }
    m_due -= steps * kStepSeconds;
    return static_cast<int>(steps);
}

} // namespace dugwise
