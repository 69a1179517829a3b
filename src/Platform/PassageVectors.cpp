// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/PassageVectors.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>

namespace dugwise::PassageVectors {

namespace {

// One vector: the codes of the meaning, two to a byte, the first half of the values in the low
// bits; those of the identity, four to a byte, a quarter of the values in each pair of bits; and
// the sizes of the two parts' steps as 16-bit fractions of kLargestStep. A value is its code less
// the middle one, times the step. Laid out so that whole rows of bytes meet whole rows of values.
constexpr std::size_t kMeaning = EmbeddingFormat::kMeaningSize;
constexpr std::size_t kIdentity = EmbeddingFormat::kIdentitySize;
constexpr std::size_t kMeaningBytes = kMeaning / 2;
constexpr std::size_t kIdentityBytes = kIdentity / 4;
static_assert(kSize == kMeaningBytes + kIdentityBytes + 2 * sizeof(quint16));

constexpr float kMeaningMiddle = 7.5F;
constexpr float kIdentityMiddle = 1.5F;
/// The steps that lose least of normally distributed values, as shares of their deviation
/// (Max, "Quantizing for minimum distortion", 1960: 16 and 4 levels).
constexpr float kMeaningStep = 0.3352F;
constexpr float kIdentityStep = 0.9957F;
constexpr float kLargestStep = 0.125F;
/// What a query's values of at most 1 are multiplied with to be whole numbers.
constexpr float kQueryScale = 16384;

/// Codes of one part of a vector, and how large their steps are.
struct Part
{
    std::array<std::uint8_t, kMeaning> codes{};
    float step = 0;
    float squares = 0; ///< of the values that the codes stand for
};

Part quantised(std::span<const float> values, float stepShare, float middle)
{
    Part part;
    const float squares = std::inner_product(values.begin(), values.end(), values.begin(), 0.F);
    part.step = stepShare * std::sqrt(squares / static_cast<float>(values.size()));
    for (std::size_t i = 0; i < values.size() && part.step > 0; ++i) {
        const float code = std::clamp(std::round(values[i] / part.step + middle), 0.F, 2 * middle);
        part.codes.at(i) = static_cast<std::uint8_t>(code);
        const float value = (code - middle) * part.step;
        part.squares += value * value;
    }
    return part;
}

quint16 asFraction(float step)
{
    return static_cast<quint16>(std::round(std::min(step / kLargestStep, 1.F) * 65535));
}

float fromFraction(const std::uint8_t *bytes)
{
    return static_cast<float>(qFromLittleEndian<quint16>(bytes)) / 65535 * kLargestStep;
}

void append(QByteArray &bytes, const SentenceVector &vector)
{
    const std::span<const float> values(vector.values);
    const Part meaning = quantised(values.first(kMeaning), kMeaningStep, kMeaningMiddle);
    const Part identity = quantised(values.last(kIdentity), kIdentityStep, kIdentityMiddle);
    std::array<std::uint8_t, kSize> packed{};
    const auto put = [&](std::size_t byte, unsigned code, std::size_t shift) {
        packed.at(byte) = static_cast<std::uint8_t>(packed.at(byte) | code << shift);
    };
    for (std::size_t i = 0; i < kMeaning; ++i)
        put(i % kMeaningBytes, meaning.codes.at(i), i / kMeaningBytes * 4);
    for (std::size_t i = 0; i < kIdentity; ++i)
        put(kMeaningBytes + i % kIdentityBytes, identity.codes.at(i), i / kIdentityBytes * 2);
    const float length = std::sqrt(meaning.squares + identity.squares);
    if (!vector.isEmpty && length > 0) {
        std::uint8_t *const steps = &packed.at(kMeaningBytes + kIdentityBytes);
        qToLittleEndian(asFraction(meaning.step / length), steps);
        qToLittleEndian(asFraction(identity.step / length), steps + sizeof(quint16));
    }
    bytes.append(reinterpret_cast<const char *>(packed.data()), kSize);
}

/// Sums of codes times values; the compiler makes vector instructions of these plain loops.
std::int32_t meaningProduct(const std::uint8_t *codes, const std::int16_t *values)
{
    std::int32_t sum = 0;
    for (std::size_t i = 0; i < kMeaningBytes; ++i)
        sum += static_cast<std::int16_t>(codes[i] & 15U) * values[i];
    for (std::size_t i = 0; i < kMeaningBytes; ++i)
        sum += static_cast<std::int16_t>(codes[i] >> 4U) * values[kMeaningBytes + i];
    return sum;
}

/// Of the quarter in the pair of bits at `Shift`, which is known when this is compiled, for the
/// sake of those instructions.
template <unsigned Shift>
std::int32_t quarterProduct(const std::uint8_t *codes, const std::int16_t *values)
{
    std::int32_t sum = 0;
    for (std::size_t i = 0; i < kIdentityBytes; ++i) {
        const auto code = static_cast<std::int16_t>((codes[i] >> Shift) & 3U);
        sum += code * values[i];
    }
    return sum;
}

std::int32_t identityProduct(const std::uint8_t *codes, const std::int16_t *values)
{
    return quarterProduct<0>(codes, values) + quarterProduct<2>(codes, values + kIdentityBytes)
           + quarterProduct<4>(codes, values + 2 * kIdentityBytes)
           + quarterProduct<6>(codes, values + 3 * kIdentityBytes);
}

} // namespace

QByteArray packed(const QList<SentenceVector> &passages)
{
    QByteArray bytes;
    bytes.reserve(passages.size() * kSize);
    for (const SentenceVector &passage : passages)
        append(bytes, passage);
    return bytes;
}

Query::Query(const SentenceVector &vector)
    : m_isEmpty(vector.isEmpty)
{
    std::ranges::transform(vector.values, m_values.begin(), [](float value) {
        return static_cast<std::int16_t>(std::round(value * kQueryScale));
    });
    const auto identity = m_values.begin() + kMeaning;
    m_meaningSum = static_cast<float>(std::accumulate(m_values.begin(), identity, 0));
    m_identitySum = static_cast<float>(std::accumulate(identity, m_values.end(), 0));
}

double Query::nearest(const QByteArray &vectors) const
{
    constexpr double kFarthest = 2;
    if (m_isEmpty)
        return kFarthest;
    const auto *const bytes = reinterpret_cast<const std::uint8_t *>(vectors.constData());
    double best = -1;
    for (qsizetype at = 0; at + kSize <= vectors.size(); at += kSize)
        best = std::max(best, cosine(bytes + at));
    return calibratedDistance(std::min(best, 1.0));
}

/// Of the query and one packed passage; -1 when that has no words.
double Query::cosine(const std::uint8_t *passage) const
{
    const std::uint8_t *const identity = passage + kMeaningBytes;
    const std::uint8_t *const steps = identity + kIdentityBytes;
    const float meaningStep = fromFraction(steps);
    const float identityStep = fromFraction(steps + sizeof(quint16));
    if (meaningStep == 0 && identityStep == 0)
        return -1;
    const auto meaningPart = static_cast<float>(meaningProduct(passage, m_values.data()));
    const auto identityPart =
        static_cast<float>(identityProduct(identity, m_values.data() + kMeaning));
    return static_cast<double>(meaningStep * (meaningPart - kMeaningMiddle * m_meaningSum)
                               + identityStep * (identityPart - kIdentityMiddle * m_identitySum))
           / static_cast<double>(kQueryScale);
}

} // namespace dugwise::PassageVectors
