// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace dugwise {

enum class ParticleKind { ambient, sparkle, orb, trail };

/// One glowing thing that drifts over a view.
struct Particle
{
    double x = 0; ///< of the centre, from the view's top left corner, in pixels
    double y = 0;
    double vx = 0; ///< pixels a step
    double vy = 0;
    double size = 0; ///< diameter, in pixels
    double opacity = 0;
    double life = 0;    ///< seconds left; it is gone at 0
    double maxLife = 0; ///< seconds against which the fade is measured; may be less than `life`
    double hue = 0;     ///< 0 to 1; where in its pulse, too
    ParticleKind kind = ParticleKind::ambient;
};

} // namespace dugwise
