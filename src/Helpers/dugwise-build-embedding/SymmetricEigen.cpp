// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-build-embedding/SymmetricEigen.h"

#include <algorithm>
#include <cmath>

namespace dugwise {

namespace {

/// A turn in the plane of two axes.
struct Rotation
{
    double cosine;
    double sine;

    void apply(double &first, double &second) const
    {
        const double x = first;
        first = cosine * x - sine * second;
        second = sine * x + cosine * second;
    }
};

/// The one that makes element (p, q) zero.
Rotation rotationFor(const SquareMatrix &matrix, std::size_t p, std::size_t q)
{
    const double theta = (matrix[q][q] - matrix[p][p]) / (2 * matrix[p][q]);
    const double tangent =
        std::copysign(1.0, theta) / (std::abs(theta) + std::sqrt(theta * theta + 1));
    const double cosine = 1 / std::sqrt(tangent * tangent + 1);
    return {cosine, tangent * cosine};
}

bool isNegligible(const SquareMatrix &matrix, std::size_t p, std::size_t q)
{
    constexpr double kPrecision = 1e-24;
    const double value = matrix[p][q];
    return value * value <= kPrecision * std::abs(matrix[p][p] * matrix[q][q]);
}

/// One round over all pairs of axes; whether there was anything left to turn.
bool sweep(SquareMatrix &matrix, SquareMatrix &vectors)
{
    bool hasTurned = false;
    for (std::size_t p = 0; p < kColumns; ++p) {
        for (std::size_t q = p + 1; q < kColumns; ++q) {
            if (isNegligible(matrix, p, q))
                continue;
            hasTurned = true;
            const Rotation rotation = rotationFor(matrix, p, q);
            for (std::size_t k = 0; k < kColumns; ++k)
                rotation.apply(matrix[p][k], matrix[q][k]);
            for (std::size_t k = 0; k < kColumns; ++k)
                rotation.apply(matrix[k][p], matrix[k][q]);
            for (std::size_t k = 0; k < kColumns; ++k)
                rotation.apply(vectors[p][k], vectors[q][k]);
        }
    }
    return hasTurned;
}

} // namespace

std::vector<Eigenpair> eigenpairs(SquareMatrix matrix)
{
    constexpr int kMostSweeps = 30;
    SquareMatrix vectors = squareMatrix();
    for (std::size_t i = 0; i < kColumns; ++i)
        vectors[i][i] = 1;
    for (int i = 0; i < kMostSweeps && sweep(matrix, vectors); ++i) {
    }
    std::vector<Eigenpair> pairs;
    for (std::size_t i = 0; i < kColumns; ++i)
        pairs.push_back({matrix[i][i], vectors[i]});
    std::ranges::stable_sort(pairs, std::ranges::greater(), &Eigenpair::value);
    return pairs;
}

} // namespace dugwise
