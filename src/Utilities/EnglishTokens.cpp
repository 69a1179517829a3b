// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/EnglishTokens.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <utility>

namespace dugwise {

namespace {

constexpr bool isUpper(char c)
{
    return c >= 'A' && c <= 'Z';
}

constexpr bool isLower(char c)
{
    return c >= 'a' && c <= 'z';
}

constexpr bool isLetter(char c)
{
    return isUpper(c) || isLower(c);
}

constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

constexpr bool isAscii(char c)
{
    return static_cast<unsigned char>(c) < 0x80;
}

constexpr char lowered(char c)
{
    return isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c;
}

/// What stands for characters that Unicode does not decompose, or that vanish; sorted.
constexpr std::array<std::pair<UChar32, std::string_view>, 32> kReplacements{{
    {0xAD, ""}, // soft hyphen
    {0xC6, "AE"},   {0xD0, "D"},    {0xD8, "O"},     {0xDE, "Th"},
    {0xDF, "ss"},   {0xE6, "ae"},   {0xF0, "d"},     {0xF8, "o"},
    {0xFE, "th"},   {0x110, "D"},   {0x111, "d"},    {0x126, "H"},
    {0x127, "h"},   {0x131, "i"},   {0x13F, "L"},    {0x140, "l"},
    {0x141, "L"},   {0x142, "l"},   {0x152, "OE"},   {0x153, "oe"},
    {0x17F, "s"},   {0x1E9E, "SS"}, {0x2018, "'"},   {0x2019, "'"},
    {0xFB00, "ff"}, // the ligatures of printed text
    {0xFB01, "fi"}, {0xFB02, "fl"}, {0xFB03, "ffi"}, {0xFB04, "ffl"},
    {0xFB05, "st"}, {0xFB06, "st"},
}};
static_assert(std::ranges::is_sorted(kReplacements,
                                     {},
                                     &std::pair<UChar32, std::string_view>::first));

/// Appends the base letter of an accented one, nothing for an accent that stands by itself, and a
/// blank for all that is no Latin letter.
void appendBaseLetter(std::string &out, UChar32 codePoint)
{
    const auto *const replacement = std::ranges::lower_bound(
        kReplacements, codePoint, {}, &std::pair<UChar32, std::string_view>::first);
    if (replacement != kReplacements.end() && replacement->first == codePoint) {
        out += replacement->second;
        return;
    }
    if (codePoint >= 0 && (U_GET_GC_MASK(codePoint) & U_GC_MN_MASK) != 0)
        return;
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2 *const canonical = icu::Normalizer2::getNFDInstance(status);
    icu::UnicodeString parts;
    const bool isComposed = codePoint >= 0 && canonical->getDecomposition(codePoint, parts);
    const char base = isComposed && parts[0] < 0x80 ? static_cast<char>(parts[0]) : ' ';
    out += isLetter(base) ? base : ' ';
}

/// The text in ASCII, of the same case.
std::string folded(std::string_view utf8)
{
    std::string out;
    out.reserve(utf8.size());
    std::size_t at = 0;
    while (at < utf8.size()) {
        const std::size_t start = at;
        while (at < utf8.size() && isAscii(utf8[at]))
            ++at;
        out += utf8.substr(start, at - start);
        while (at < utf8.size() && !isAscii(utf8[at])) {
            UChar32 codePoint = 0;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion" // in the macro of ICU
#pragma GCC diagnostic ignored "-Wold-style-cast"
            U8_NEXT(utf8.data(), at, utf8.size(), codePoint);
#pragma GCC diagnostic pop
            appendBaseLetter(out, codePoint);
        }
    }
    return out;
}

/// Puts a blank before every capital that begins a word of two letters or more: one behind two
/// lower-case letters, or the last of several ones before two lower-case letters.
std::string splitAtCapitals(std::string_view text)
{
    std::string out;
    out.reserve(text.size() * 2);
    const auto at = [&](std::size_t i) { return i < text.size() ? text[i] : ' '; };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isAfterWord = i >= 2 && isLower(text[i - 1]) && isLetter(text[i - 2]);
        const bool isAfterAcronym = i >= 2 && isUpper(text[i - 1]) && isUpper(text[i - 2])
                                    && isLower(at(i + 1)) && isLower(at(i + 2));
        const bool beginsWord =
            isUpper(text[i]) && ((isAfterWord && isLetter(at(i + 1))) || isAfterAcronym);
        if (beginsWord)
            out += ' ';
        out += text[i];
    }
    return out;
}

/// Reads the tokens of lower-cased ASCII text.
class Tokenizer
{
public:
    explicit Tokenizer(std::string_view text)
        : m_text(text)
    {}

    std::vector<std::string> tokens()
    {
        m_tokens.reserve(m_text.size() / 5);
        while (m_at < m_text.size()) {
            if (isLower(m_text[m_at]))
                takeWord();
            else if (isDigit(m_text[m_at]))
                takeNumber();
            else
                ++m_at;
        }
        return std::move(m_tokens);
    }

private:
    [[nodiscard]] char at(std::size_t i) const { return i < m_text.size() ? m_text[i] : ' '; }
    [[nodiscard]] std::string_view lettersAt(std::size_t begin) const
    {
        std::size_t end = begin;
        while (isLower(at(end)))
            ++end;
        return m_text.substr(begin, end - begin);
    }

    void takeWord()
    {
        const std::string_view letters = lettersAt(m_at);
        m_at += letters.size();
        std::string word(letters);
        if (word.size() == 1)
            takeInitials(word);
        if (at(m_at) == '\'' && takeShortForm(word))
            return;
        if (word == "cannot")
            append({"can", "not"});
        else
            m_tokens.push_back(std::move(word));
    }

    /// The letters of "u.s." that follow the first.
    void takeInitials(std::string &word)
    {
        while (at(m_at) == '.' && isLower(at(m_at + 1)) && !isLower(at(m_at + 2))) {
            word += m_text[m_at + 1];
            m_at += 2;
        }
    }

    /// What follows an apostrophe, when that is the end of a short form.
    bool takeShortForm(const std::string &word)
    {
        const std::string_view ending = lettersAt(m_at + 1);
        if (ending == "t" && word.size() > 1 && word.back() == 'n') {
            const std::string stem = word.substr(0, word.size() - 1);
            append({word == "can" ? "can" : word == "won" ? "will" : stem, "not"});
        } else if (std::ranges::find(kDropped, ending) != kDropped.end()) {
            m_tokens.push_back(word);
        } else {
            return false;
        }
        m_at += 1 + ending.size();
        return true;
    }

    void takeNumber()
    {
        std::string number;
        const auto beginsGroup = [&] {
            return at(m_at) == ',' && isDigit(at(m_at + 1)) && isDigit(at(m_at + 2))
                   && isDigit(at(m_at + 3));
        };
        for (; isDigit(at(m_at)) || beginsGroup(); ++m_at) {
            if (m_text[m_at] != ',')
                number += m_text[m_at];
        }
        m_tokens.push_back(std::move(number));
    }

    void append(std::initializer_list<std::string_view> words)
    {
        m_tokens.insert(m_tokens.end(), words.begin(), words.end());
    }

    static constexpr std::array<std::string_view, 6> kDropped{"s", "re", "ve", "ll", "d", "m"};

    std::string_view m_text;
    std::size_t m_at = 0;
    std::vector<std::string> m_tokens;
};

std::vector<std::string> tokensOf(std::string text)
{
    std::ranges::transform(text, text.begin(), lowered);
    return Tokenizer(text).tokens();
}

} // namespace

std::vector<std::string> englishTokens(std::string_view utf8)
{
    return tokensOf(folded(utf8));
}

std::vector<std::string> englishNameTokens(std::string_view utf8)
{
    return tokensOf(splitAtCapitals(folded(utf8)));
}

} // namespace dugwise
