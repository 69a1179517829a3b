// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EmbeddingTableFormat.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

/// Directions that tell words apart by their spelling: each points somewhere else, as far as
/// chance allows.
namespace dugwise::WordIdentity {

using Vector = std::array<float, EmbeddingFormat::kIdentitySize>;

/// Adds `weight` times the direction of length 1 of the spelling with this fnv1a() hash.
void add(std::span<float, EmbeddingFormat::kIdentitySize> sum, std::uint64_t hash, float weight);

/// The direction of a word that no dictionary has, of length 1: spellings that share pieces of
/// three or four letters point in similar directions.
[[nodiscard]] Vector ofUnknown(std::string_view word);

} // namespace dugwise::WordIdentity
