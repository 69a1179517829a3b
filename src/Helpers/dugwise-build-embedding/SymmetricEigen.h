// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Helpers/dugwise-build-embedding/DenseMatrix.h"

#include <array>
#include <vector>

namespace dugwise {

struct Eigenpair
{
    double value;
    std::array<double, kColumns> vector; ///< of length 1
};

/// Those of a symmetric matrix, the greatest value first (Jacobi's method).
[[nodiscard]] std::vector<Eigenpair> eigenpairs(SquareMatrix matrix);

} // namespace dugwise
