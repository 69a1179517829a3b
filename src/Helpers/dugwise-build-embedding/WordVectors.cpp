// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-build-embedding/WordVectors.h"

#include "Helpers/dugwise-build-embedding/SymmetricEigen.h"
#include "Utilities/StableHash.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>

namespace dugwise {

using namespace EmbeddingFormat;

namespace {

static_assert(kMeaningSize <= kColumns);

constexpr int kRounds = 4;
constexpr std::uint64_t kSeed = 42;
/// Power of the singular values in the lengths of the dimensions.
constexpr double kSingularPower = 0.75;

/// Sums of two numbers drawn evenly from -0.5 to 0.5.
DenseMatrix randomMatrix(std::size_t rows)
{
    SplitMix64 random(kSeed);
    const auto draw = [&] { return static_cast<double>(random() >> 11) * 0x1p-53 - 0.5; };
    DenseMatrix matrix(rows);
    for (auto &row : matrix) {
        for (float &value : row) {
            const double first = draw();
            value = static_cast<float>(first + draw());
        }
    }
    return matrix;
}

/// From the space that the columns of the basis span, to its principal axes scaled by importance.
SquareMatrix scaledAxes(const std::vector<Eigenpair> &pairs)
{
    SquareMatrix axes = squareMatrix();
    for (std::size_t axis = 0; axis < kMeaningSize; ++axis) {
        const double scale = std::pow(std::max(pairs[axis].value, 0.0), kSingularPower / 2);
        for (std::size_t k = 0; k < kColumns; ++k)
            axes[k][axis] = pairs[axis].vector.at(k) * scale;
    }
    return axes;
}

std::uint8_t nearestLevel(float value)
{
    const auto *const above = std::ranges::lower_bound(kLevels, value);
    if (above == kLevels.begin())
        return 0;
    const bool isBelowNearer = above == kLevels.end() || value - *(above - 1) < *above - value;
    return static_cast<std::uint8_t>(above - kLevels.begin() - (isBelowNearer ? 1 : 0));
}

Codes encoded(std::span<const float, kMeaningSize> row)
{
    const double squares = std::inner_product(row.begin(), row.end(), row.begin(), 0.0);
    if (!(squares > 0))
        return kNoMeaning;
    const auto scale = static_cast<float>(1 / std::sqrt(squares / kMeaningSize));
    Codes codes{};
    for (std::size_t i = 0; i < codes.size(); ++i) {
        const unsigned first = nearestLevel(row[2 * i] * scale);
        const unsigned second = nearestLevel(row[2 * i + 1] * scale);
        codes[i] = static_cast<std::uint8_t>(second << 4 | first);
    }
    return codes;
}

} // namespace

std::vector<Codes> wordVectors(const SparseMatrix &contexts, std::size_t threads)
{
    const SparseMatrix byContext = transposed(contexts);
    DenseMatrix basis = randomMatrix(contexts.rows());
    DenseMatrix projected;
    for (int round = 0; round < kRounds; ++round) {
        multiply(byContext, basis, projected, threads);
        multiply(contexts, projected, basis, threads);
        orthonormalise(basis, threads);
    }
    orthonormalise(basis, threads); // again, now that there is little left to do, and to round
    multiply(byContext, basis, projected, threads);
    multiply(basis, scaledAxes(eigenpairs(gramMatrix(projected, threads))), threads);

    std::vector<Codes> codes;
    for (const auto &row : basis)
        codes.push_back(encoded(std::span(row).first<kMeaningSize>()));
    return codes;
}

} // namespace dugwise
