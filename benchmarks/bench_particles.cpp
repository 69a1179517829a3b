// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Moves and paints the particles behind the welcome, as one frame of the display after the other.
// usage: bench_particles [FRAMES]

#include "Measure.h"
#include "Views/ParticleField.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <utility>

using namespace dugwise;
using namespace dugwise::bench;

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const int frames = QGuiApplication::arguments().value(1, QStringLiteral("2000")).toInt();
    constexpr QSize size(650, 690);
    constexpr QPointF mouseLocation(300, 300);
    RandomSource random(1);
    QList<Particle> particles = initializeParticles(size, random);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);

    double moving = 0;
    double drawing = 0;
    double painting = 0;
    for (int frame = 0; frame < frames; ++frame) {
        const Stopwatch move;
        particles = step(std::move(particles), size, mouseLocation, random);
        moving += move.seconds();
        const Stopwatch draw;
        const auto discs = particleDiscs(particles, frame / 60.0, mouseLocation, Qt::darkCyan);
        drawing += draw.seconds();
        const Stopwatch paint;
        image.fill(Qt::transparent);
        QPainter painter(&image);
        paintDiscs(painter, discs);
        painter.end();
        painting += paint.seconds();
    }
    const double perFrame = 1e6 / frames;
    std::printf("%d frames of %lld particles: step %.1f us, discs %.1f us, paint %.0f us a frame; "
                "at 60 frames a second %.1f %% of a core\n",
                frames,
                static_cast<long long>(particles.size()),
                moving * perFrame,
                drawing * perFrame,
                painting * perFrame,
                (moving + drawing + painting) / frames * 60 * 100);
    return 0;
}
