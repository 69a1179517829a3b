// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/FoldedText.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace dugwise {

namespace {

bool isAscii(char c)
{
    return static_cast<unsigned char>(c) < 0x80;
}

/// A stretch beyond ASCII: compatibility forms are left as they are.
void appendFolded(std::string &out, std::string_view text)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2 *const canonical = icu::Normalizer2::getNFDInstance(status);
    if (U_FAILURE(status)) {
        out.append(text);
        return;
    }
    const icu::StringPiece piece(text.data(), static_cast<int32_t>(text.size()));
    // Folding cases may compose, and marks may be anywhere.
    const icu::UnicodeString cased =
        canonical->normalize(icu::UnicodeString::fromUTF8(piece), status).foldCase();
    const icu::UnicodeString parts = canonical->normalize(cased, status);
    icu::UnicodeString letters;
    for (int32_t at = 0; at < parts.length(); at = parts.moveIndex32(at, 1)) {
        const UChar32 character = parts.char32At(at);
        if (u_charType(character) != U_NON_SPACING_MARK)
            letters.append(character);
    }
    letters.toUTF8String(out);
}

/// The folded forms of all characters of two bytes: Latin, Greek, Cyrillic, Hebrew and Arabic,
/// which stand alone between those of ASCII too often to be asked for one by one.
std::array<std::string, 0x800> foldedCharacters()
{
    std::array<std::string, 0x800> forms;
    for (unsigned character = 0x80; character < forms.size(); ++character) {
        const std::array bytes{static_cast<char>(0xC0U | (character >> 6U)),
                               static_cast<char>(0x80U | (character & 0x3FU))};
        appendFolded(forms.at(character), {bytes.data(), bytes.size()});
    }
    return forms;
}

bool isTwoBytes(std::string_view text)
{
    return text.size() > 1 && (static_cast<unsigned char>(text.front()) & 0xE0U) == 0xC0;
}

} // namespace

std::string folded(std::string_view utf8)
{
    static const std::array<std::string, 0x800> kTwoBytes = foldedCharacters();
    std::string out;
    out.reserve(utf8.size());
    std::size_t at = 0;
    while (at < utf8.size()) {
        const char c = utf8[at];
        if (isAscii(c)) {
            out += static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
            ++at;
            continue;
        }
        const std::string_view rest = utf8.substr(at);
        if (isTwoBytes(rest)) {
            const auto first = static_cast<unsigned char>(rest[0]);
            const auto second = static_cast<unsigned char>(rest[1]);
            out += kTwoBytes.at(((first & 0x1FU) << 6U) | (second & 0x3FU));
            at += 2;
            continue;
        }
        const auto end =
            static_cast<std::size_t>(std::ranges::find_if(rest, isAscii) - rest.begin());
        appendFolded(out, rest.substr(0, end));
        at += end;
    }
    return out;
}

} // namespace dugwise
