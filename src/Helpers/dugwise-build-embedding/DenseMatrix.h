// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <vector>

/// Tall matrices of a few hundred columns, and the square ones of as many rows that go with them.
/// Results do not depend on the number of threads.
namespace dugwise {

constexpr std::size_t kColumns = 336;

using DenseMatrix = std::vector<std::array<float, kColumns>>;
using SquareMatrix = std::vector<std::array<double, kColumns>>;

/// All zeros.
[[nodiscard]] SquareMatrix squareMatrix();

/// The products of all pairs of columns: m^T m.
[[nodiscard]] SquareMatrix gramMatrix(const DenseMatrix &m, std::size_t threads);

/// m becomes m * factor.
void multiply(DenseMatrix &m, const SquareMatrix &factor, std::size_t threads);

/// Turns the columns into ones of length 1 that span the same space and are perpendicular, but for
/// rounding: the less so the more nearly parallel they were. By the Cholesky decomposition of their
/// products.
void orthonormalise(DenseMatrix &m, std::size_t threads);

} // namespace dugwise
