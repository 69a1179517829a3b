// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/StableHash.h"

#include <array>
#include <bit>
#include <cstring>

namespace dugwise {

namespace {

// Odd, so that multiplying by them can be undone and loses nothing.
constexpr std::uint64_t kFirstFactor = 0x9E3779B185EBCA87;
constexpr std::uint64_t kSecondFactor = 0xC2B2AE3D27D4EB4F;

constexpr std::uint64_t mixed(std::uint64_t state, std::uint64_t word)
{
    return std::rotl(state + word * kSecondFactor, 31) * kFirstFactor;
}

std::uint64_t wordAt(std::string_view bytes, std::size_t at)
{
    std::uint64_t word = 0;
    const std::string_view found = bytes.substr(at, sizeof word);
    std::memcpy(&word, found.data(), found.size());
    if constexpr (std::endian::native == std::endian::big)
        word = __builtin_bswap64(word);
    return word;
}

} // namespace

std::uint64_t checksum(std::string_view bytes)
{
    // Four sums side by side keep the processor busy.
    constexpr std::size_t kWord = sizeof(std::uint64_t);
    std::array<std::uint64_t, 4> sums{1, 2, 3, 4};
    std::size_t at = 0;
    for (; at + sums.size() * kWord <= bytes.size(); at += sums.size() * kWord) {
        for (std::size_t i = 0; i < sums.size(); ++i)
            sums[i] = mixed(sums[i], wordAt(bytes, at + i * kWord));
    }
    std::uint64_t sum = bytes.size();
    for (; at < bytes.size(); at += kWord)
        sum = mixed(sum, wordAt(bytes, at));
    for (const std::uint64_t part : sums)
        sum = mixed(sum, part);
    return sum ^ (sum >> 29);
}

} // namespace dugwise
