// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/ParserProtocol.h"

#include <cstdint>

/// What is said over the parser's protocol of an image: a request for a document, whose reply has
/// its thumbnail for a text.
namespace dugwise::ThumbnailProtocol {

/// Pixels of a thumbnail's longer side, at most. Each has four bytes, hence two code units.
constexpr int kMostSide = 512;
static_assert(2U * kMostSide * kMostSide <= ParserProtocol::kMostText);

/// A reply's result.
constexpr std::int32_t packed(int width, int height)
{
    return (width << 16) | height;
}
constexpr int width(std::int32_t packed)
{
    return packed >> 16;
}
constexpr int height(std::int32_t packed)
{
    return packed & 0xFFFF;
}

} // namespace dugwise::ThumbnailProtocol
