// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string_view>

/// Hashes that are the same on every machine and in every version, so that files may hold what
/// comes of them.
namespace dugwise {

/// FNV-1a of 64 bits; `seed` is the hash of what stands before `bytes`.
[[nodiscard]] constexpr std::uint64_t fnv1a(std::string_view bytes,
                                            std::uint64_t seed = 0xCBF29CE484222325)
{
    std::uint64_t hash = seed;
    for (const char byte : bytes) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= 0x100000001B3;
    }
    return hash;
}

/// The numbers of the generator SplitMix64 (Steele, Lea, Flood 2014).
class SplitMix64
{
public:
    constexpr explicit SplitMix64(std::uint64_t seed)
        : m_state(seed)
    {}

    constexpr std::uint64_t operator()()
    {
        m_state += 0x9E3779B97F4A7C15;
        std::uint64_t mixed = m_state;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
        return mixed ^ (mixed >> 31);
    }

private:
    std::uint64_t m_state;
};

/// A checksum for files, several bytes a clock cycle: changing any eight bytes that stand together
/// always changes it. It does not guard against people.
[[nodiscard]] std::uint64_t checksum(std::string_view bytes);

} // namespace dugwise
