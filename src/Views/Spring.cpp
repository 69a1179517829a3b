// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Spring.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace dugwise {

namespace {

constexpr double kSettledWithin = 0.001;

/// Displacement from the end, and velocity over the angular frequency.
struct Swing
{
    double displacement = 0;
    double velocity = 0;
};

/// The solution of x'' + 2 z w x' + w^2 x = 0 from x = -1 at rest, at an angle of w t.
Swing swing(double response, double dampingFraction, double seconds)
{
    if (response <= 0)
        return {};
    if (seconds <= 0)
        return {.displacement = -1, .velocity = 0};
    const double angle = 2 * std::numbers::pi / response * seconds;
    const double damping = std::max(0.0, dampingFraction);
    if (damping < 1) {
        const double damped = std::sqrt(1 - damping * damping);
        const double decay = std::exp(-damping * angle);
        const double sine = std::sin(damped * angle) / damped;
        return {-decay * (std::cos(damped * angle) + damping * sine), decay * sine};
    }
    if (damping > 1) {
        const double fast = -damping - std::sqrt(damping * damping - 1);
        const double slow = 1 / fast; // the product of the two rates is 1
        const double fastDecay = std::exp(fast * angle);
        const double slowDecay = std::exp(slow * angle);
        return {(fast * slowDecay - slow * fastDecay) / (slow - fast),
                (slowDecay - fastDecay) / (slow - fast)};
    }
    const double decay = std::exp(-angle);
    return {-(1 + angle) * decay, angle * decay};
}

} // namespace

double springPosition(double response, double dampingFraction, double seconds)
{
    return 1 + swing(response, dampingFraction, seconds).displacement;
}

bool springIsSettled(double response, double dampingFraction, double seconds)
{
    // Its energy only falls: once that is too little to go farther out, it is so for good.
    const Swing now = swing(response, dampingFraction, seconds);
    return std::hypot(now.displacement, now.velocity) < kSettledWithin;
}

} // namespace dugwise
