// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-build-embedding/DenseMatrix.h"

#include "Helpers/dugwise-build-embedding/Parallel.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace dugwise {

namespace {

/// Four numbers that the processor handles at once.
using Lane [[gnu::vector_size(16)]] = float;
constexpr std::size_t kLaneSize = sizeof(Lane) / sizeof(float);

constexpr std::size_t kTileRows = 4;
constexpr std::size_t kTileColumns = 2 * kLaneSize;
static_assert(kColumns % kTileRows == 0 && kColumns % kTileColumns == 0);

Lane lane(const float *values)
{
    Lane loaded;
    std::memcpy(&loaded, values, sizeof loaded);
    return loaded;
}

/// 4 x 8 sums of products, few enough to stay in the processor's registers. They are no array,
/// because the compiler would keep that in memory.
class Tile
{
public:
    /// Adds the products of four numbers, `stride` apart, and eight that stand together.
    void add(const float *four, std::size_t stride, const float *eight)
    {
        const Lane left = lane(eight);
        const Lane right = lane(eight + kLaneSize);
        m_left0 += four[0] * left;
        m_right0 += four[0] * right;
        m_left1 += four[stride] * left;
        m_right1 += four[stride] * right;
        m_left2 += four[2 * stride] * left;
        m_right2 += four[2 * stride] * right;
        m_left3 += four[3 * stride] * left;
        m_right3 += four[3 * stride] * right;
    }

    using Sums = std::array<std::array<float, kTileColumns>, kTileRows>;
    [[nodiscard]] Sums sums() const
    {
        const std::array<Lane, kTileRows * 2> lanes{
            m_left0, m_right0, m_left1, m_right1, m_left2, m_right2, m_left3, m_right3};
        Sums sums{};
        static_assert(sizeof sums == sizeof lanes);
        std::memcpy(&sums, &lanes, sizeof sums);
        return sums;
    }

private:
    Lane m_left0{};
    Lane m_right0{};
    Lane m_left1{};
    Lane m_right1{};
    Lane m_left2{};
    Lane m_right2{};
    Lane m_left3{};
    Lane m_right3{};
};

/// Rows that fit into the cache together.
constexpr std::size_t kBlock = 64;

/// Adds the products of the columns' upper triangle, and some below it.
void addProducts(SquareMatrix &sum, const DenseMatrix &m, Range rows)
{
    for (std::size_t i = 0; i < kColumns; i += kTileRows) {
        for (std::size_t j = i / kTileColumns * kTileColumns; j < kColumns; j += kTileColumns) {
            Tile tile;
            for (std::size_t row = rows.begin; row < rows.end; ++row)
                tile.add(&m[row][i], 1, &m[row][j]);
            const Tile::Sums sums = tile.sums();
            for (std::size_t a = 0; a < kTileRows; ++a) {
                for (std::size_t b = 0; b < kTileColumns; ++b)
                    sum[i + a][j + b] += static_cast<double>(sums[a][b]);
            }
        }
    }
}

/// Replaces four rows of m, or the last ones, by their products with the factor.
void multiplyFourRows(DenseMatrix &m, std::size_t row, const DenseMatrix &factor)
{
    std::array<DenseMatrix::value_type, kTileRows> four{};
    const std::size_t count = std::min(kTileRows, m.size() - row);
    std::copy_n(m.begin() + static_cast<std::ptrdiff_t>(row), count, four.begin());
    for (std::size_t j = 0; j < kColumns; j += kTileColumns) {
        Tile tile;
        for (std::size_t k = 0; k < kColumns; ++k)
            tile.add(&four[0][k], kColumns, &factor[k][j]);
        const Tile::Sums sums = tile.sums();
        for (std::size_t a = 0; a < count; ++a)
            std::ranges::copy(sums[a], m[row + a].begin() + static_cast<std::ptrdiff_t>(j));
    }
}

/// The upper triangle R with R^T R = m.
SquareMatrix choleskyFactor(const SquareMatrix &m)
{
    constexpr double kLeastPivot = 1e-30;
    SquareMatrix r = squareMatrix();
    for (std::size_t i = 0; i < kColumns; ++i) {
        for (std::size_t j = i; j < kColumns; ++j) {
            double rest = m[i][j];
            for (std::size_t k = 0; k < i; ++k)
                rest -= r[k][i] * r[k][j];
            r[i][j] = i == j ? std::sqrt(std::max(rest, kLeastPivot)) : rest / r[i][i];
        }
    }
    return r;
}

SquareMatrix inverseOfUpperTriangle(const SquareMatrix &r)
{
    SquareMatrix inverse = squareMatrix();
    for (std::size_t j = 0; j < kColumns; ++j) {
        inverse[j][j] = 1 / r[j][j];
        for (std::size_t i = j; i-- > 0;) {
            double sum = 0;
            for (std::size_t k = i + 1; k <= j; ++k)
                sum += r[i][k] * inverse[k][j];
            inverse[i][j] = -sum / r[i][i];
        }
    }
    return inverse;
}

} // namespace

SquareMatrix squareMatrix()
{
    return SquareMatrix(kColumns, SquareMatrix::value_type{});
}

SquareMatrix gramMatrix(const DenseMatrix &m, std::size_t threads)
{
    std::vector<SquareMatrix> sums(kPieces);
    inParallel(threads, m.size(), [&](std::size_t piece, Range rows) {
        sums[piece] = squareMatrix();
        for (std::size_t at = rows.begin; at < rows.end; at += kBlock)
            addProducts(sums[piece], m, {at, std::min(at + kBlock, rows.end)});
    });
    SquareMatrix total = squareMatrix();
    for (const SquareMatrix &sum : sums) {
        for (std::size_t i = 0; i < kColumns; ++i) {
            for (std::size_t j = i; j < kColumns; ++j)
                total[i][j] += sum[i][j];
        }
    }
    for (std::size_t i = 0; i < kColumns; ++i) {
        for (std::size_t j = 0; j < i; ++j)
            total[i][j] = total[j][i];
    }
    return total;
}

void multiply(DenseMatrix &m, const SquareMatrix &factor, std::size_t threads)
{
    DenseMatrix rounded(kColumns);
    for (std::size_t i = 0; i < kColumns; ++i) {
        std::ranges::transform(
            factor[i], rounded[i].begin(), [](double value) { return static_cast<float>(value); });
    }
    const std::size_t groups = (m.size() + kTileRows - 1) / kTileRows;
    inParallel(threads, groups, [&](std::size_t, Range range) {
        for (std::size_t group = range.begin; group < range.end; ++group)
            multiplyFourRows(m, group * kTileRows, rounded);
    });
}

void orthonormalise(DenseMatrix &m, std::size_t threads)
{
    SquareMatrix products = gramMatrix(m, threads);
    double trace = 0;
    for (std::size_t i = 0; i < kColumns; ++i)
        trace += products[i][i];
    // Keeps the decomposition going where rounding has made columns dependent.
    for (std::size_t i = 0; i < kColumns; ++i)
        products[i][i] += 1e-9 * trace / kColumns;
    multiply(m, inverseOfUpperTriangle(choleskyFactor(products)), threads);
}

} // namespace dugwise
