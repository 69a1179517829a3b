// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-extract/CleanText.h"

#include <array>

namespace dugwise {

namespace {

/// Windows-1252 from 0x80 to 0x9F, where it differs from Latin-1; 0 where it has nothing.
constexpr std::array<char16_t, 32> kWindows1252{
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

constexpr unsigned kSizes = 4; // of a character in UTF-8, at most

struct Character
{
    char32_t value;
    std::size_t size; ///< bytes; 0 when there is no valid one
};

/// The character of more than one byte that `text` begins with.
Character longCharacter(std::string_view text)
{
    const auto first = static_cast<unsigned char>(text.front());
    std::size_t size = 0;
    char32_t value = 0;
    if (first >= 0xC2 && first < 0xE0) {
        size = 2;
        value = first & 0x1FU;
    } else if (first >= 0xE0 && first < 0xF0) {
        size = 3;
        value = first & 0x0FU;
    } else if (first >= 0xF0 && first < 0xF5) {
        size = kSizes;
        value = first & 0x07U;
    }
    if (size == 0 || size > text.size())
        return {0, 0};
    for (const char next : text.substr(1, size - 1)) {
        const auto byte = static_cast<unsigned char>(next);
        if ((byte & 0xC0U) != 0x80)
            return {0, 0};
        value = (value << 6U) | (byte & 0x3FU);
    }
    constexpr std::array<char32_t, kSizes + 1> kSmallest{0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = value >= 0xD800 && value < 0xE000;
    if (value < kSmallest.at(size) || value > 0x10FFFF || isSurrogate)
        return {0, 0};
    return {value, size};
}

bool isSpace(char32_t c)
{
    return c <= 0x20 || (c >= 0x7F && c <= 0xA0) || c == 0x1680 || (c >= 0x2000 && c <= 0x200B)
           || c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F || c == 0x3000;
}

/// What is not there to be seen: soft hyphens, and the marks that senders fill previews with.
bool isInvisible(char32_t c)
{
    return c == 0xAD || c == 0x34F || c == 0x2060 || c == 0xFEFF;
}

} // namespace

void appendCharacter(std::string &utf8, char32_t character)
{
    const auto byte = [&](char32_t value) { utf8 += static_cast<char>(value); };
    if (character < 0x80) {
        byte(character);
    } else if (character < 0x800) {
        byte(0xC0U | (character >> 6U));
        byte(0x80U | (character & 0x3FU));
    } else if (character < 0x10000) {
        if (character >= 0xD800 && character < 0xE000)
            return;
        byte(0xE0U | (character >> 12U));
        byte(0x80U | ((character >> 6U) & 0x3FU));
        byte(0x80U | (character & 0x3FU));
    } else if (character <= 0x10FFFF) {
        byte(0xF0U | (character >> 18U));
        byte(0x80U | ((character >> 12U) & 0x3FU));
        byte(0x80U | ((character >> 6U) & 0x3FU));
        byte(0x80U | (character & 0x3FU));
    }
}

std::string cleanText(std::string_view text, std::size_t most)
{
    std::string clean;
    bool isSpaceDue = false;
    std::size_t at = 0;
    while (at < text.size() && clean.size() < most) {
        const auto first = static_cast<unsigned char>(text[at]);
        Character next{first, 1};
        if (first >= 0x80) {
            next = longCharacter(text.substr(at));
            if (next.size == 0) {
                next.value = first < 0xA0 ? char32_t{kWindows1252.at(first - 0x80U)} : first;
                next.size = 1;
            }
        }
        at += next.size;
        if (isInvisible(next.value))
            continue;
        if (isSpace(next.value)) {
            isSpaceDue = !clean.empty();
            continue;
        }
        if (isSpaceDue)
            clean += ' ';
        isSpaceDue = false;
        appendCharacter(clean, next.value);
    }
    return clean;
}

} // namespace dugwise
