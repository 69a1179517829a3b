// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/ParticleField.h"
#include "Views/SparkleBursts.h"

#include <QImage>
#include <QPainter>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;
using namespace dugwise;

namespace {

constexpr QSizeF kSize(650, 690);

Particle particleOf(ParticleKind kind)
{
    return {.x = 100,
            .y = 200,
            .size = 10,
            .opacity = 0.5,
            .life = 4,
            .maxLife = 5,
            .hue = 0.5,
            .kind = kind};
}

Particle stepped(Particle particle, QPointF mouseLocation = {})
{
    RandomSource random(1);
    return step({particle}, kSize, mouseLocation, random).first();
}

qsizetype countOf(const QList<Particle> &particles, ParticleKind kind)
{
    return std::ranges::count(particles, kind, &Particle::kind);
}

/// "x y radius opacity gradientRadius" and its stops, as "place saturation value alpha".
QString textOf(const Disc &disc)
{
    QString text = u"%1 %2 r%3 o%4 g%5"_s.arg(disc.center.x(), 0, 'f', 2)
                       .arg(disc.center.y(), 0, 'f', 2)
                       .arg(disc.radius, 0, 'f', 3)
                       .arg(disc.opacity, 0, 'f', 3)
                       .arg(disc.gradientRadius, 0, 'f', 3);
    for (const auto &[place, color] : disc.stops) {
        text += u" | %1 %2 %3 %4 %5"_s.arg(place)
                    .arg(color.hsvHueF(), 0, 'f', 2)
                    .arg(color.hsvSaturationF(), 0, 'f', 2)
                    .arg(color.valueF(), 0, 'f', 2)
                    .arg(color.alphaF(), 0, 'f', 2);
    }
    return text;
}

QStringList textOf(const QList<Disc> &discs)
{
    QStringList lines;
    for (const Disc &disc : discs)
        lines.append(textOf(disc));
    return lines;
}

} // namespace

class TstParticleField : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void beginning()
    {
        RandomSource random(7);
        const QList<Particle> particles = initializeParticles(kSize, random);
        QCOMPARE(particles.size(), 81);
        const auto isOrdered = std::ranges::is_sorted(particles, {}, &Particle::kind);
        QVERIFY(isOrdered); // ambient ones, sparkles, orbs
        QCOMPARE(countOf(particles, ParticleKind::ambient), 60);
        QCOMPARE(countOf(particles, ParticleKind::sparkle), 15);
        const auto outlives = [](const Particle &particle) {
            return particle.life > particle.maxLife;
        };
        QVERIFY(std::ranges::any_of(particles, outlives)); // two draws, not one
        QVERIFY(!std::ranges::all_of(particles.first(60), outlives));
    }

    void beginningWithoutRoom()
    {
        RandomSource random(7);
        for (const Particle &particle : initializeParticles({0, 0}, random)) {
            const double most = particle.kind == ParticleKind::orb ? 0 : 1;
            QVERIFY(particle.x >= 0 && particle.x <= most);
            QVERIFY(particle.y >= 0 && particle.y <= most);
        }
    }

    void stepOfAll()
    {
        RandomSource random(3);
        const QList<Particle> before = initializeParticles(kSize, random);
        const QList<Particle> after = step(before, kSize, {}, random);
        QCOMPARE(after.size(), before.size());
        for (qsizetype i = 0; i < kParticleCount; ++i) {
            const double rise = before[i].y - after[i].y;
            QVERIFY(rise >= 0.1 && rise <= 0.5);
            QCOMPARE(after[i].life, before[i].life - 1.0 / 60);
            QCOMPARE(after[i].vx, before[i].vx);
        }
    }

    void deadOnesAreReplacedAtTheEnd()
    {
        RandomSource random(3);
        QList<Particle> particles = initializeParticles(kSize, random);
        particles[2].life = 1.0 / 60; // to 0 precisely
        particles[61].life = 0.001;
        const double nextLife = particles[3].life;
        particles = step(particles, kSize, {}, random);
        QCOMPARE(particles.size(), 81);
        QCOMPARE(particles[2].life, nextLife - 1.0 / 60);
        QVERIFY(particles[78].kind == ParticleKind::orb);
        QVERIFY(particles[79].kind == ParticleKind::ambient);
        QVERIFY(particles[80].kind == ParticleKind::sparkle);
    }

    void orbsBounceAndLive()
    {
        Particle orb = particleOf(ParticleKind::orb);
        orb.x = kSize.width() - 0.1;
        orb.vx = 0.2;
        orb.vy = -0.1;
        orb.life = 0.001;
        orb = stepped(orb);
        QCOMPARE(orb.vx, -0.2);
        QCOMPARE(orb.vy, -0.1);
        QCOMPARE(orb.life, 100.0);
        QVERIFY(stepped(orb).x < kSize.width());
        orb.y = 0;
        QCOMPARE(stepped(orb).vy, 0.1);
    }

    void trailsSlowDownAndGo()
    {
        RandomSource random(11);
        QList<Particle> particles =
            spawnBurst(initializeParticles(kSize, random), {30, 40}, random);
        QCOMPARE(countOf(particles, ParticleKind::trail), 20);
        for (const Particle &trail : particles.sliced(81)) {
            QCOMPARE(QPointF(trail.x, trail.y), QPointF(30, 40));
            const double speed = std::hypot(trail.vx, trail.vy);
            QVERIFY(speed >= 1 && speed <= 4);
            const Particle next = stepped(trail, {31, 41}); // the pointer does not pull it
            QCOMPARE(next.vx, trail.vx * 0.96);
            QCOMPARE(next.size, trail.size * 0.98);
        }
        for (int i = 0; i < 90; ++i) // 1.5 s of life
            particles = step(particles, kSize, {}, random);
        QCOMPARE(countOf(particles, ParticleKind::trail), 0);
        QCOMPARE(particles.size(), 81);
    }

    void pullOfThePointer_data()
    {
        QTest::addColumn<QPointF>("mouseLocation");
        QTest::addColumn<QPointF>("pull");
        QTest::newRow("near") << QPointF(130, 240) << QPointF(0.03, 0.04);
        QTest::newRow("almost out of reach") << QPointF(249.99, 200) << QPointF(0.05, 0);
        QTest::newRow("150 away") << QPointF(250, 200) << QPointF();
        QTest::newRow("1 away") << QPointF(100, 201) << QPointF();
        QTest::newRow("upon it") << QPointF(100, 200) << QPointF();
        QTest::newRow("along an edge") << QPointF(0, 200) << QPointF(-0.05, 0);
    }
    void pullOfThePointer()
    {
        QFETCH(const QPointF, mouseLocation);
        QFETCH(const QPointF, pull);
        const Particle pulled = stepped(particleOf(ParticleKind::ambient), mouseLocation);
        QCOMPARE(QPointF(pulled.vx, pulled.vy), pull);
        QCOMPARE(stepped(particleOf(ParticleKind::sparkle), mouseLocation).vx, 0.0);
    }

    void noPullWithoutAPointer()
    {
        Particle particle = particleOf(ParticleKind::ambient);
        particle.x = particle.y = 20;
        QCOMPARE(stepped(particle).vx, 0.0);
    }

    /// Rows were reckoned by hand from the formulas, at a time and a hue that tell their terms
    /// apart.
    void pictures_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QStringList>("discs");
        // sin(2 + 7.5) = -0.0752, sin(4 + 10) = 0.9906; fade = 0.5 * 4 / 5
        QTest::newRow("ambient") << int(ParticleKind::ambient)
                                 << QStringList{u"100.00 200.00 r4.925 o0.215 g4.925"
                                                " | 0 0.50 0.50 0.95 1.00"_s};
        QTest::newRow("sparkle") << int(ParticleKind::sparkle)
                                 << QStringList{u"100.00 200.00 r5.000 o0.399 g5.000"
                                                " | 0 -1.00 0.00 1.00 1.00"_s,
                                                u"100.00 200.00 r15.000 o0.159 g15.000"
                                                " | 0 -1.00 0.00 1.00 0.60"
                                                " | 1 -1.00 0.00 1.00 0.00"_s};
        // 8 sin(0.5 + 5) = -5.644, 6 cos(0.3 + 3.5) = -4.746
        QTest::newRow("orb") << int(ParticleKind::orb)
                             << QStringList{u"94.36 195.25 r20.000 o0.060 g20.000"
                                            " | 0 0.50 0.60 0.90 0.30 | 1 0.50 0.60 0.90 0.00"_s,
                                            u"94.36 195.25 r5.000 o0.200 g5.000"
                                            " | 0 0.50 0.60 0.90 1.00"_s};
        QTest::newRow("trail") << int(ParticleKind::trail)
                               << QStringList{u"100.00 200.00 r5.000 o0.400 g10.000"
                                              " | 0 0.50 0.70 1.00 1.00 | 0.5 0.50 0.70 1.00 0.30"
                                              " | 1 0.50 0.70 1.00 0.00"_s};
    }
    void pictures()
    {
        QFETCH(const int, kind);
        QFETCH(const QStringList, discs);
        const Particle particle = particleOf(static_cast<ParticleKind>(kind));
        QCOMPARE(textOf(particleDiscs({particle}, 1, {}, Qt::red)), discs);
    }

    void glowOfThePointerAndLimits()
    {
        Particle bright = particleOf(ParticleKind::trail);
        bright.life = 3 * bright.maxLife;
        Particle dead = particleOf(ParticleKind::trail);
        dead.life = 0;
        const QList<Disc> discs =
            particleDiscs({dead, bright}, 1, {7, 8}, QColor::fromHsvF(0, 1, 1));
        QCOMPARE(discs.size(), 2);
        QCOMPARE(discs.first().opacity, 1.0);
        QCOMPARE(textOf(discs.last()),
                 u"7.00 8.00 r120.000 o0.060 g120.000"
                 " | 0 0.00 1.00 1.00 0.40 | 1 0.00 1.00 1.00 0.00"_s);
    }

    void glowsArePaintedWhole()
    {
        QImage image(300, 300, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        paintDiscs(painter, {{{150.5, 150.5}, 120, 0.5, {{0, Qt::red}, {1, Qt::transparent}}}});
        painter.end();
        QCOMPARE(image.pixelColor(150, 150).red(), 255);
        QVERIFY(std::abs(image.pixelColor(150, 150).alpha() - 127) <= 1);
        for (int i = 1; i < 150; ++i) { // it fades evenly to all sides, and ends
            const double expected = std::max(0.0, 127.5 * (1 - i / 120.0));
            for (const QPoint at :
                 {QPoint(150 + i, 150), QPoint(150, 150 - i), QPoint(150, 149 + i)})
                QVERIFY(std::abs(image.pixelColor(at).alpha() - expected) <= 3);
        }
        QCOMPARE(image.pixelColor(60, 60).alpha(), 0);
    }

    void stepsFollowTimeNotFrames()
    {
        for (const int rate : {30, 60, 120, 240}) {
            StepClock clock;
            int steps = 0;
            for (int frame = 0; frame < 8 * rate; ++frame)
                steps += clock.advance(1.0 / rate);
            QVERIFY2(std::abs(steps - 500) <= 1, qPrintable(u"%1 at %2"_s.arg(steps).arg(rate)));
        }
        StepClock clock;
        QCOMPARE(clock.advance(3600), 4);
        QCOMPARE(clock.advance(0.016), 1); // nothing is left of the pause
    }

    void sparkleBursts()
    {
        const QList<BurstState> bursts = {{QUuid(), {10, 20}, 5}};
        const QList<Disc> discs = burstDiscs(bursts, 5.5, Qt::red);
        QCOMPARE(discs.size(), 12);
        QCOMPARE(discs[0].center, QPointF(60, 20));
        QCOMPARE(discs[3].center, QPointF(10, 70));
        QCOMPARE(discs[11].center, QPointF(10 + 50 * std::sqrt(3) / 2, -5));
        QCOMPARE(discs[0].radius, 1.0);
        QCOMPARE(discs[0].opacity, 0.4);
        QVERIFY(burstDiscs(bursts, 6, Qt::red).isEmpty());
        QCOMPARE(withoutOldBursts(bursts, 6.19).size(), 1);
        QCOMPARE(withoutOldBursts(bursts, 6.21).size(), 0);
    }
};

QTEST_GUILESS_MAIN(TstParticleField)
#include "tst_ParticleField.moc"
