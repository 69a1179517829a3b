// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-extract/HTMLText.h"

#include "Helpers/dugwise-extract/CleanText.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace dugwise {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t kLongestName = 16; // of a tag or a character reference that is known

// Sorted, to be searched. The standard of HTML has a list of all, "named character references";
// these are those of HTML 4 that mail has. Those of Latin-1 come by their place from 160 on.
constexpr std::array kReferences{
    std::pair{"amp"sv, U'&'},         std::pair{"apos"sv, U'\''},
    std::pair{"bdquo"sv, U'\u201E'},  std::pair{"bull"sv, U'\u2022'},
    std::pair{"dagger"sv, U'\u2020'}, std::pair{"euro"sv, U'\u20AC'},
    std::pair{"gt"sv, U'>'},          std::pair{"hellip"sv, U'\u2026'},
    std::pair{"ldquo"sv, U'\u201C'},  std::pair{"lsaquo"sv, U'\u2039'},
    std::pair{"lsquo"sv, U'\u2018'},  std::pair{"lt"sv, U'<'},
    std::pair{"mdash"sv, U'\u2014'},  std::pair{"minus"sv, U'\u2212'},
    std::pair{"ndash"sv, U'\u2013'},  std::pair{"oelig"sv, U'\u0153'},
    std::pair{"quot"sv, U'"'},        std::pair{"rarr"sv, U'\u2192'},
    std::pair{"rdquo"sv, U'\u201D'},  std::pair{"rsaquo"sv, U'\u203A'},
    std::pair{"rsquo"sv, U'\u2019'},  std::pair{"sbquo"sv, U'\u201A'},
    std::pair{"scaron"sv, U'\u0161'}, std::pair{"trade"sv, U'\u2122'},
    std::pair{"zwj"sv, U'\u200D'},    std::pair{"zwnj"sv, U'\u200C'},
};
constexpr std::array kLatin1References{
    "nbsp"sv,   "iexcl"sv,  "cent"sv,   "pound"sv,  "curren"sv, "yen"sv,    "brvbar"sv, "sect"sv,
    "uml"sv,    "copy"sv,   "ordf"sv,   "laquo"sv,  "not"sv,    "shy"sv,    "reg"sv,    "macr"sv,
    "deg"sv,    "plusmn"sv, "sup2"sv,   "sup3"sv,   "acute"sv,  "micro"sv,  "para"sv,   "middot"sv,
    "cedil"sv,  "sup1"sv,   "ordm"sv,   "raquo"sv,  "frac14"sv, "frac12"sv, "frac34"sv, "iquest"sv,
    "Agrave"sv, "Aacute"sv, "Acirc"sv,  "Atilde"sv, "Auml"sv,   "Aring"sv,  "AElig"sv,  "Ccedil"sv,
    "Egrave"sv, "Eacute"sv, "Ecirc"sv,  "Euml"sv,   "Igrave"sv, "Iacute"sv, "Icirc"sv,  "Iuml"sv,
    "ETH"sv,    "Ntilde"sv, "Ograve"sv, "Oacute"sv, "Ocirc"sv,  "Otilde"sv, "Ouml"sv,   "times"sv,
    "Oslash"sv, "Ugrave"sv, "Uacute"sv, "Ucirc"sv,  "Uuml"sv,   "Yacute"sv, "THORN"sv,  "szlig"sv,
    "agrave"sv, "aacute"sv, "acirc"sv,  "atilde"sv, "auml"sv,   "aring"sv,  "aelig"sv,  "ccedil"sv,
    "egrave"sv, "eacute"sv, "ecirc"sv,  "euml"sv,   "igrave"sv, "iacute"sv, "icirc"sv,  "iuml"sv,
    "eth"sv,    "ntilde"sv, "ograve"sv, "oacute"sv, "ocirc"sv,  "otilde"sv, "ouml"sv,   "divide"sv,
    "oslash"sv, "ugrave"sv, "uacute"sv, "ucirc"sv,  "uuml"sv,   "yacute"sv, "thorn"sv,  "yuml"sv,
};

/// Elements within a line; all others break it.
constexpr std::array kInline{"a"sv,    "abbr"sv,  "b"sv,     "bdi"sv,    "bdo"sv,    "big"sv,
                             "cite"sv, "code"sv,  "del"sv,   "em"sv,     "font"sv,   "i"sv,
                             "ins"sv,  "kbd"sv,   "label"sv, "mark"sv,   "q"sv,      "s"sv,
                             "samp"sv, "small"sv, "span"sv,  "strike"sv, "strong"sv, "sub"sv,
                             "sup"sv,  "time"sv,  "tt"sv,    "u"sv,      "var"sv,    "wbr"sv};
/// Elements whose content nobody reads.
constexpr std::array kUnread{"script"sv, "style"sv, "template"sv, "title"sv};

char lower(char c)
{
    return static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
}

bool isLetter(char c)
{
    return lower(c) >= 'a' && lower(c) <= 'z';
}

bool isLetterOrDigit(char c)
{
    return isLetter(c) || (c >= '0' && c <= '9');
}

class Reader
{
public:
    explicit Reader(std::string_view html)
        : m_rest(html)
    {}

    std::string text()
    {
        while (!m_rest.empty()) {
            const std::size_t plain = std::min(m_rest.find_first_of("<&"), m_rest.size());
            m_text.append(m_rest.substr(0, plain));
            m_rest.remove_prefix(plain);
            if (m_rest.empty())
                break;
            if (m_rest.front() == '&')
                readReference();
            else
                readMarkup();
        }
        return std::move(m_text);
    }

private:
    void take(std::size_t count) { m_rest.remove_prefix(std::min(count, m_rest.size())); }

    void readMarkup()
    {
        if (m_rest.starts_with("<!--")) {
            const std::size_t end = m_rest.find("-->", 2); // "<!-->" is whole
            take(end == std::string_view::npos ? m_rest.size() : end + 3);
            return;
        }
        const char next = m_rest.size() > 1 ? m_rest[1] : ' ';
        if (isLetter(next) || (next == '/' && m_rest.size() > 2 && isLetter(m_rest[2]))) {
            readTag();
        } else if (next == '!' || next == '?' || next == '/') {
            take(std::min(m_rest.find('>'), m_rest.size() - 1) + 1);
        } else {
            m_text += '<';
            take(1);
        }
    }

    void readTag()
    {
        const bool isEnd = m_rest[1] == '/';
        std::string name;
        std::size_t at = isEnd ? 2 : 1;
        for (; at < m_rest.size() && isLetterOrDigit(m_rest[at]); ++at) {
            if (name.size() < kLongestName)
                name += lower(m_rest[at]);
        }
        take(tagEnd(at));
        if (std::ranges::find(kInline, name) == kInline.end())
            m_text += '\n';
        if (!isEnd && std::ranges::find(kUnread, name) != kUnread.end())
            skipElement(name);
    }

    /// Behind the ">" that ends a tag whose attributes begin at `at`; quoted ones may have it too.
    [[nodiscard]] std::size_t tagEnd(std::size_t at) const
    {
        while (at < m_rest.size() && m_rest[at] != '>') {
            const char quote = m_rest[at];
            const bool isQuoted = (quote == '"' || quote == '\'') && m_rest[at - 1] == '=';
            const std::size_t close = isQuoted ? m_rest.find(quote, at + 1) : at;
            at = close == std::string_view::npos ? at + 1 : close + 1;
        }
        return std::min(at + 1, m_rest.size());
    }

    /// Goes to the end tag of an element.
    void skipElement(std::string_view name)
    {
        while (!m_rest.empty()) {
            take(std::min(m_rest.find("</"), m_rest.size()));
            const std::string_view found = m_rest.substr(std::min<std::size_t>(2, m_rest.size()));
            const bool isIt = found.size() >= name.size()
                              && std::ranges::equal(found.substr(0, name.size()), name, {}, lower);
            if (isIt)
                return;
            take(2);
        }
    }

    void readReference()
    {
        std::size_t end = 1;
        while (end < m_rest.size() && end <= kLongestName
               && (isLetterOrDigit(m_rest[end]) || m_rest[end] == '#'))
            ++end;
        const std::optional<char32_t> character = referred(m_rest.substr(1, end - 1));
        if (!character) {
            m_text += '&';
            take(1);
            return;
        }
        appendCharacter(m_text, *character);
        take(end < m_rest.size() && m_rest[end] == ';' ? end + 1 : end);
    }

    static std::optional<char32_t> referred(std::string_view name)
    {
        if (name.starts_with('#'))
            return numbered(name.substr(1));
        const auto *const known = std::ranges::lower_bound(
            kReferences, name, {}, &std::pair<std::string_view, char32_t>::first);
        if (known != kReferences.end() && known->first == name)
            return known->second;
        const auto *const latin = std::ranges::find(kLatin1References, name);
        if (latin == kLatin1References.end())
            return std::nullopt;
        return static_cast<char32_t>(0xA0 + (latin - kLatin1References.begin()));
    }

    static std::optional<char32_t> numbered(std::string_view digits)
    {
        const bool isHex = !digits.empty() && lower(digits.front()) == 'x';
        if (isHex)
            digits.remove_prefix(1);
        char32_t value = 0;
        for (const char digit : digits) {
            const char small = lower(digit);
            const bool isDecimal = small >= '0' && small <= '9';
            if (!isDecimal && !(isHex && small >= 'a' && small <= 'f'))
                return std::nullopt;
            const auto step = static_cast<char32_t>(isDecimal ? small - '0' : small - 'a' + 10);
            value = std::min<char32_t>(value * (isHex ? 16U : 10U) + step, 0x110000);
        }
        return digits.empty() || value == 0 ? std::nullopt : std::optional(value);
    }

    std::string_view m_rest;
    std::string m_text;
};

} // namespace

std::string htmlText(std::string_view html)
{
    return Reader(html).text();
}

} // namespace dugwise
