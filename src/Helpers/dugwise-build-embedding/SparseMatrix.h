// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Helpers/dugwise-build-embedding/DenseMatrix.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace dugwise {

/// A matrix that is mostly zeros, its other elements row by row.
struct SparseMatrix
{
    struct Element
    {
        std::uint32_t column;
        float value;
    };

    std::size_t columns = 0;
    std::vector<std::size_t> ends{}; ///< of the rows, in elements
    std::vector<Element> elements{};

    [[nodiscard]] std::size_t rows() const { return ends.size(); }
};

using SparseRow = std::vector<SparseMatrix::Element>;
using SparseRows = std::vector<SparseRow>;

[[nodiscard]] SparseRows transposed(const SparseRows &rows, std::size_t columns);
[[nodiscard]] SparseMatrix transposed(const SparseMatrix &m);

/// product becomes m * factor.
void multiply(const SparseMatrix &m,
              const DenseMatrix &factor,
              DenseMatrix &product,
              std::size_t threads);

} // namespace dugwise
