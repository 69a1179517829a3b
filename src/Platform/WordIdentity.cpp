// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/WordIdentity.h"

#include "Utilities/StableHash.h"

#include <cmath>
#include <numeric>
#include <string>

namespace dugwise::WordIdentity {

namespace {

constexpr std::size_t kSize = EmbeddingFormat::kIdentitySize;

/// +1 or -1 for each bit of a byte, the lowest first.
constexpr std::array<std::array<float, 8>, 256> kSigns = [] {
    std::array<std::array<float, 8>, 256> signs{};
    for (std::size_t byte = 0; byte < signs.size(); ++byte) {
        for (std::size_t bit = 0; bit < 8; ++bit)
            signs[byte][bit] = (byte >> bit & 1) != 0 ? 1.0F : -1.0F;
    }
    return signs;
}();

/// Words of a language have fewer letters; of longer runs, the beginning is looked at.
constexpr std::size_t kMostLetters = 64;
constexpr std::uint64_t kPieceSeed = 7;
/// Share of the pieces in the square of the length.
constexpr float kPieceShare = 0.3F;

/// Calls visit(place, byte) for every eight signs drawn from a generator of this seed.
template <typename Visit>
void visitSigns(std::uint64_t seed, Visit visit)
{
    SplitMix64 random(seed);
    for (std::size_t at = 0; at < kSize;) {
        const std::uint64_t bits = random();
        for (unsigned shift = 0; shift < 64; shift += 8, at += 8)
            visit(at, bits >> shift & 0xFF);
    }
}

/// Adds up the signs of many pieces, eight to an integer whose bytes count the positive ones.
class PieceSum
{
public:
    void add(std::string_view piece)
    {
        visitSigns(fnv1a(piece, kPieceSeed),
                   [&](std::size_t at, std::size_t byte) { m_positive[at / 8] += kBits[byte]; });
        ++m_pieces;
    }

    [[nodiscard]] Vector vector() const
    {
        Vector sum{};
        for (std::size_t i = 0; i < kSize; ++i) {
            const auto positive = static_cast<int>(m_positive[i / 8] >> (i % 8 * 8) & 0xFF);
            sum[i] = static_cast<float>(2 * positive - m_pieces);
        }
        return sum;
    }

private:
    static_assert(2 * (kMostLetters + 2) <= 0xFF, "each byte must hold as many pieces");

    /// The bits of a byte as the bytes of an integer.
    static constexpr std::array<std::uint64_t, 256> kBits = [] {
        std::array<std::uint64_t, 256> spread{};
        for (std::size_t byte = 0; byte < spread.size(); ++byte) {
            for (std::size_t bit = 0; bit < 8; ++bit)
                spread[byte] |= std::uint64_t{byte >> bit & 1} << (8 * bit);
        }
        return spread;
    }();

    std::array<std::uint64_t, kSize / 8> m_positive{};
    int m_pieces = 0;
};

/// Changes the length, unless that is 0.
void scale(Vector &vector, float wanted)
{
    const float squares = std::inner_product(vector.begin(), vector.end(), vector.begin(), 0.0F);
    if (!(squares > 0))
        return;
    const float factor = wanted / std::sqrt(squares);
    for (float &value : vector)
        value *= factor;
}

} // namespace

void add(std::span<float, kSize> sum, std::uint64_t hash, float weight)
{
    const float step = weight / std::sqrt(static_cast<float>(kSize));
    visitSigns(hash, [&](std::size_t at, std::size_t byte) {
        for (std::size_t i = 0; i < 8; ++i)
            sum[at + i] += step * kSigns[byte][i];
    });
}

Vector ofUnknown(std::string_view word)
{
    const std::string marked = '<' + std::string(word.substr(0, kMostLetters)) + '>';
    PieceSum pieces;
    for (const std::size_t size : {std::size_t{3}, std::size_t{4}}) {
        for (std::size_t at = 0; at + size <= marked.size(); ++at)
            pieces.add({marked.data() + at, size});
    }
    Vector mixed = pieces.vector();
    scale(mixed, std::sqrt(kPieceShare));
    add(mixed, fnv1a(word), std::sqrt(1 - kPieceShare));
    scale(mixed, 1);
    return mixed;
}

} // namespace dugwise::WordIdentity
