// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EmbeddingTableFormat.h"

#include <array>

namespace dugwise {

/// What a text is about, as a direction: 320 dimensions of meaning, then 256 of wording.
struct SentenceVector
{
    std::array<float, EmbeddingFormat::kVectorSize> values{}; ///< of length 1, or all 0
    bool isEmpty = true;                                      ///< the text has no word or number

    /// From 0 for the same to 2 for the opposite, see calibratedDistance(). An empty vector is at
    /// distance 2 from all that are not empty.
    [[nodiscard]] static double cosineDistance(const SentenceVector &a, const SentenceVector &b);
};

/// Distance for a cosine from -1 to 1, falling from 2 to 0 in three straight pieces: texts that
/// have nothing to do with each other mostly have cosines below 0.2, and then lie beyond 1.3;
/// those that say much the same lie below 0.4.
[[nodiscard]] double calibratedDistance(double cosine);

} // namespace dugwise
