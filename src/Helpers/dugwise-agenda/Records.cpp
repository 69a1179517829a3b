// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-agenda/Records.h"

#include "Platform/AgendaProtocol.h"

#include <algorithm>
#include <array>
#include <optional>

namespace dugwise {

namespace {

constexpr std::size_t kMostOfText = 65'536;
constexpr std::size_t kMostElements = 100;

/// The character that begins at `position` of UTF-8, which is moved behind it; absent when there is
/// none (Unicode 15, table 3-7).
std::optional<char32_t> takeCharacter(std::string_view text, std::size_t &position)
{
    const auto byteAt = [text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    const unsigned lead = byteAt(position);
    if (lead < 0x80) {
        ++position;
        return static_cast<char32_t>(lead);
    }
    const unsigned length = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : 2;
    if (lead < 0xc2 || lead > 0xf4)
        return std::nullopt;
    char32_t character = lead & (0xffU >> (length + 1));
    for (unsigned i = 1; i < length; ++i) {
        if ((byteAt(position + i) & 0xc0U) != 0x80)
            return std::nullopt;
        character = (character << 6U) | (byteAt(position + i) & 0x3fU);
    }
    constexpr std::array<char32_t, 5> kLeast{0, 0, 0x80, 0x800, 0x10000};
    if (character < kLeast.at(length) || character > 0x10ffff
        || (character >= 0xd800 && character < 0xe000))
        return std::nullopt;
    position += length;
    return character;
}

bool isUtf8(std::string_view text)
{
    for (std::size_t position = 0; position < text.size();) {
        if (!takeCharacter(text, position))
            return false;
    }
    return true;
}

} // namespace

void Records::begin(std::uint32_t document)
{
    for (const char digit : std::to_string(document))
        m_written += static_cast<char16_t>(digit);
}

void Records::text(std::string_view text)
{
    m_written += AgendaProtocol::kField;
    append(text, kMostOfText);
}

void Records::number(std::int64_t number)
{
    text(std::to_string(number));
}

void Records::list(const std::vector<std::string> &elements)
{
    m_written += AgendaProtocol::kField;
    for (std::size_t i = 0; i < std::min(elements.size(), kMostElements); ++i) {
        if (i > 0)
            m_written += AgendaProtocol::kElement;
        append(elements[i], kMostOfText);
    }
}

void Records::whole(std::string_view text)
{
    m_written += AgendaProtocol::kField;
    append(text, kMostOfWhole);
}

void Records::end()
{
    m_written += AgendaProtocol::kRecord;
}

void Records::append(std::string_view text, std::size_t most)
{
    const bool isLatin = !isUtf8(text);
    const std::size_t end = m_written.size() + most;
    for (std::size_t position = 0; position < text.size() && m_written.size() < end;) {
        char32_t character = 0;
        if (isLatin)
            character = static_cast<unsigned char>(text[position++]);
        else
            character = takeCharacter(text, position).value_or(U' ');
        const bool isControl = character < 0x20 && character != U'\n' && character != U'\t';
        if (isControl || character == 0x7f)
            character = U' ';
        if (character >= 0x10000) {
            m_written += static_cast<char16_t>(0xd7c0 + (character >> 10U));
            m_written += static_cast<char16_t>(0xdc00 + (character & 0x3ffU));
        } else {
            m_written += static_cast<char16_t>(character);
        }
    }
}

} // namespace dugwise
