// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/SentenceEmbedding.h"
#include "Platform/SentenceVector.h"

#include <QByteArray>
#include <QList>

#include <array>
#include <cstdint>

namespace dugwise {

/// The vectors of a file's passages in few bytes, to be kept with the file: each value of the
/// meaning in four bits and of the identity in two, which is near enough for ranking.
namespace PassageVectors {

/// Bytes of one vector.
constexpr qsizetype kSize = 228;

/// The vectors one after the other, 228 bytes each; what is written on one machine is right on
/// every other.
[[nodiscard]] QByteArray packed(const QList<SentenceVector> &passages);

/// Compares a text with packed passages.
class Query final : public PassageQuery
{
public:
    explicit Query(const SentenceVector &vector);

    [[nodiscard]] double nearest(const QByteArray &vectors) const override;

private:
    [[nodiscard]] double cosine(const std::uint8_t *passage) const;

    std::array<std::int16_t, EmbeddingFormat::kVectorSize> m_values{};
    bool m_isEmpty = false;
    float m_meaningSum = 0;
    float m_identitySum = 0;
};

} // namespace PassageVectors

} // namespace dugwise
