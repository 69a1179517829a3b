// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Utilities/EnglishMorphology.h"
#include "Utilities/StableHash.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

/// The file that dugwise-build-embedding writes and EmbeddingTable reads. All numbers are
/// little-endian. Behind the header stand, each padded with zeros to a multiple of eight bytes:
///
///   mean        float[576]      what all sentences have in common
///   words       WordRecord[]    ascending by their bytes
///   forms       FormRecord[]    irregular forms, ascending
///   bases       uint32[]        of irregular forms: part of speech << 30 | number of a word
///   wordSlots   uint32[]        hash tables of words and forms, see slotOf()
///   formSlots   uint32[]
///   text        char[]          the spellings
///   codes       Codes[]         one per word, two dimensions a byte, the first in the low half
namespace dugwise::EmbeddingFormat {

static_assert(std::endian::native == std::endian::little, "the file is read as it stands");

constexpr std::size_t kMeaningSize = 320;  ///< dimensions of meaning
constexpr std::size_t kIdentitySize = 256; ///< dimensions that tell words apart by spelling
constexpr std::size_t kVectorSize = kMeaningSize + kIdentitySize;
constexpr std::size_t kCodeBytes = kMeaningSize / 2;

constexpr std::array<char, 8> kMagic{'D', 'u', 'g', 'w', 'E', 'm', 'b', '\n'};
constexpr std::uint32_t kVersion = 1;

struct Header
{
    std::array<char, 8> magic;
    std::uint64_t checksum; ///< checksum() of all that follows this number
    std::uint32_t version;
    std::uint32_t words; ///< numbers of elements
    std::uint32_t forms;
    std::uint32_t bases;
    std::uint32_t wordSlots; ///< a power of two, more than there are words
    std::uint32_t formSlots;
    std::uint32_t textBytes;
    float tokens; ///< of the text that glossCount is counted in
};
static_assert(sizeof(Header) == 48);
constexpr std::size_t kChecksumEnd = offsetof(Header, checksum) + sizeof(Header::checksum);

struct WordRecord
{
    std::uint32_t spelling;   ///< packSpelling()
    std::uint16_t glossCount; ///< packCount() of its occurrences in the dictionary's own text
    std::uint16_t tagCount;   ///< and in the texts whose words the dictionary's authors marked
    std::array<std::uint8_t, kPartsOfSpeech> weights; ///< packWeight()
};
static_assert(sizeof(WordRecord) == 12);

struct FormRecord
{
    std::uint32_t spelling;
    std::uint32_t bases; ///< first << 4 | number of them
};

/// Where a spelling stands in the text: its offset, and its length in the low byte.
constexpr std::size_t kLongestSpelling = 0xFF;
constexpr std::size_t kMostText = std::size_t{1} << 24;
constexpr std::uint32_t packSpelling(std::size_t offset, std::size_t length)
{
    return static_cast<std::uint32_t>(offset << 8 | length);
}

constexpr std::uint32_t kMostBases = 0xF;
constexpr unsigned kPartShift = 30;
constexpr std::uint32_t kNumberMask = (std::uint32_t{1} << kPartShift) - 1;

/// A slot holds the number of a spelling + 1 and twelve bits of its hash, or 0. The spelling stands
/// in the first free slot from `hash % slots` on, round the end.
constexpr unsigned kNumberBits = 20;
constexpr std::uint32_t kMostWords = (std::uint32_t{1} << kNumberBits) - 2;
constexpr std::uint32_t slotOf(std::uint64_t hash, std::uint32_t number)
{
    return static_cast<std::uint32_t>(hash >> 52) << kNumberBits | (number + 1);
}

inline std::uint16_t packCount(float count)
{
    return static_cast<std::uint16_t>(std::fmin(65535.0F, std::round(std::log2(count + 1) * 3000)));
}
inline float unpackCount(std::uint16_t packed)
{
    return std::exp2(static_cast<float>(packed) / 3000) - 1;
}

/// 0 stands for a word that is not of that part of speech.
inline std::uint8_t packWeight(float weight)
{
    return weight > 0 ? static_cast<std::uint8_t>(
               std::fmin(255.0F, 1 + std::round(std::log2(weight + 1) * 16)))
                      : std::uint8_t{0};
}
inline float unpackWeight(std::uint8_t packed)
{
    return packed == 0 ? 0 : std::fmax(0.01F, std::exp2(static_cast<float>(packed - 1) / 16) - 1);
}

/// What the codes mean, in units of the root mean square of a row: the best sixteen levels for
/// normally distributed numbers (Max 1960).
constexpr std::array<float, 16> kLevels{-2.7326F,
                                        -2.0690F,
                                        -1.6181F,
                                        -1.2562F,
                                        -0.9424F,
                                        -0.6568F,
                                        -0.3881F,
                                        -0.1284F,
                                        0.1284F,
                                        0.3881F,
                                        0.6568F,
                                        0.9424F,
                                        1.2562F,
                                        1.6181F,
                                        2.0690F,
                                        2.7326F};

using Codes = std::array<std::uint8_t, kCodeBytes>;
/// Stands for a word without a direction of meaning; no other row has one level alone.
constexpr Codes kNoMeaning{};

} // namespace dugwise::EmbeddingFormat
