// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-agenda/ContentLines.h"

#include <algorithm>

namespace dugwise {

namespace {

constexpr std::string_view kQuotedPrintable = "QUOTED-PRINTABLE";

char upper(char character)
{
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                                : character;
}

/// Where the character is first, outside quotes; a quote that is not closed counts for nothing.
std::size_t findUnquoted(std::string_view text, char wanted)
{
    bool isQuoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"')
            isQuoted = !isQuoted;
        else if (text[i] == wanted && !isQuoted)
            return i;
    }
    return isQuoted ? text.find(wanted) : std::string_view::npos;
}

int hexDigit(char character)
{
    const char digit = upper(character);
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    return digit >= 'A' && digit <= 'F' ? digit - 'A' + 10 : -1;
}

std::string fromQuotedPrintable(std::string_view text)
{
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '=' && i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
        const int low = high >= 0 ? hexDigit(text[i + 2]) : -1;
        bytes += low >= 0 ? static_cast<char>(high * 16 + low) : text[i];
        if (low >= 0)
            i += 2;
    }
    return bytes;
}

/// Cuts the part off that ends at the next character of this kind outside quotes.
std::string_view takePart(std::string_view &text, char end)
{
    const std::size_t size = std::min(findUnquoted(text, end), text.size());
    const std::string_view part = text.substr(0, size);
    text.remove_prefix(std::min(size + 1, text.size()));
    return part;
}

} // namespace

bool isSameName(std::string_view one, std::string_view other)
{
    return std::ranges::equal(one, other, {}, upper, upper);
}

std::optional<ContentLine> ContentLine::parse(std::string_view line)
{
    const std::size_t colon = findUnquoted(line, ':');
    if (colon == std::string_view::npos)
        return std::nullopt;
    const std::string_view head = line.substr(0, colon);
    const std::size_t nameEnd = std::min(head.find(';'), head.size());
    std::string_view name = head.substr(0, nameEnd);
    if (const std::size_t dot = name.rfind('.'); dot != std::string_view::npos)
        name.remove_prefix(dot + 1);
    if (name.empty())
        return std::nullopt;
    return ContentLine{.whole = line,
                       .name = name,
                       .parameters = head.substr(nameEnd),
                       .value = line.substr(colon + 1)};
}

bool ContentLine::isNamed(std::string_view other) const
{
    return isSameName(name, other);
}

bool ContentLine::isValue(std::string_view other) const
{
    return isSameName(trimmed(value), other);
}

std::string_view ContentLine::parameter(std::string_view parameterName) const
{
    std::string_view rest = parameters.substr(std::min<std::size_t>(1, parameters.size()));
    while (!rest.empty()) {
        std::string_view parameterValue = takePart(rest, ';');
        if (!isSameName(takePart(parameterValue, '='), parameterName))
            continue;
        if (parameterValue.size() >= 2 && parameterValue.front() == '"'
            && parameterValue.back() == '"')
            parameterValue = parameterValue.substr(1, parameterValue.size() - 2);
        return parameterValue;
    }
    return {};
}

bool ContentLine::isThisAndFuture() const
{
    return isSameName(parameter("RANGE"), "THISANDFUTURE");
}

bool ContentLine::isQuotedPrintable() const
{
    if (parameters.empty())
        return false;
    if (isSameName(parameter("ENCODING"), kQuotedPrintable))
        return true;
    std::string_view rest = parameters.substr(1);
    while (!rest.empty()) {
        if (isSameName(takePart(rest, ';'), kQuotedPrintable))
            return true;
    }
    return false;
}

std::string ContentLine::decoded() const
{
    return isQuotedPrintable() ? fromQuotedPrintable(value) : std::string(value);
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

std::string unescaped(std::string_view text)
{
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size()) {
            ++i;
            plain += text[i] == 'n' || text[i] == 'N' ? '\n' : text[i];
        } else {
            plain += text[i];
        }
    }
    return plain;
}

std::vector<std::string_view> split(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\') {
            ++i;
        } else if (text[i] == separator) {
            parts.push_back(text.substr(begin, i - begin));
            begin = i + 1;
        }
    }
    parts.push_back(text.substr(begin));
    return parts;
}

std::optional<ContentLine> ContentLines::next()
{
    while (!m_rest.empty()) {
        std::string_view line = physicalLine();
        if (isFolded()) {
            m_joined = line;
            while (isFolded())
                m_joined += physicalLine().substr(1);
            line = m_joined;
        }
        std::optional<ContentLine> parsed = ContentLine::parse(line);
        if (!parsed)
            continue;
        if (line.ends_with('=') && parsed->isQuotedPrintable()) { // goes on in the next line
            m_joined = line;
            while (m_joined.ends_with('=') && !m_rest.empty()) {
                m_joined.pop_back();
                m_joined += physicalLine();
            }
            parsed = ContentLine::parse(m_joined);
        }
        return parsed;
    }
    return std::nullopt;
}

std::string_view ContentLines::physicalLine()
{
    const std::size_t end = std::min(m_rest.find('\n'), m_rest.size());
    std::string_view line = m_rest.substr(0, end);
    m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

bool ContentLines::isFolded() const
{
    return m_rest.starts_with(' ') || m_rest.starts_with('\t');
}

} // namespace dugwise
