// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-build-embedding/SparseMatrix.h"

#include "Helpers/dugwise-build-embedding/Parallel.h"

#include <numeric>

namespace dugwise {

SparseRows transposed(const SparseRows &rows, std::size_t columns)
{
    SparseRows turned(columns);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (const auto [column, value] : rows[row])
            turned[column].push_back({static_cast<std::uint32_t>(row), value});
    }
    return turned;
}

SparseMatrix transposed(const SparseMatrix &m)
{
    SparseMatrix turned;
    turned.columns = m.rows();
    turned.elements.resize(m.elements.size());
    std::vector<std::size_t> next(m.columns + 1);
    for (const SparseMatrix::Element &element : m.elements)
        ++next[element.column + 1];
    std::partial_sum(next.begin(), next.end(), next.begin());
    turned.ends.assign(next.begin() + 1, next.end());
    std::size_t at = 0;
    for (std::size_t row = 0; row < m.rows(); ++row) {
        for (; at < m.ends[row]; ++at) {
            const auto [column, value] = m.elements[at];
            turned.elements[next[column]++] = {static_cast<std::uint32_t>(row), value};
        }
    }
    return turned;
}

void multiply(const SparseMatrix &m,
              const DenseMatrix &factor,
              DenseMatrix &product,
              std::size_t threads)
{
    product.resize(m.rows());
    inParallel(threads, m.rows(), [&](std::size_t, Range rows) {
        for (std::size_t row = rows.begin; row < rows.end; ++row) {
            std::array<float, kColumns> sum{};
            for (std::size_t at = row == 0 ? 0 : m.ends[row - 1]; at < m.ends[row]; ++at) {
                const auto [column, value] = m.elements[at];
                const float *const values = factor[column].data();
                for (std::size_t i = 0; i < kColumns; ++i)
                    sum[i] += value * values[i];
            }
            product[row] = sum;
        }
    });
}

} // namespace dugwise
