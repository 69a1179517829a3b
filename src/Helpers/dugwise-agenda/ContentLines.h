// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dugwise {

/// A line of iCalendar (RFC 5545, 3.1), vCard (RFC 6350, 3.3) and what they come from, unfolded.
/// Names compare without regard to case.
struct ContentLine
{
    std::string_view whole;
    std::string_view name;       ///< without the group before it
    std::string_view parameters; ///< each with the semicolon before it
    std::string_view value;      ///< as it stands there

    /// Absent when it has no name and colon.
    [[nodiscard]] static std::optional<ContentLine> parse(std::string_view line);

    [[nodiscard]] bool isNamed(std::string_view other) const;
    [[nodiscard]] bool isValue(std::string_view other) const;
    /// The first value of a parameter, without quotes; empty when there is none.
    [[nodiscard]] std::string_view parameter(std::string_view parameterName) const;
    /// Whether its RANGE says so.
    [[nodiscard]] bool isThisAndFuture() const;
    /// vCard 2.1 gives the value alone, too.
    [[nodiscard]] bool isQuotedPrintable() const;
    /// The value as plain bytes: still escaped, and in whatever characters it is written.
    [[nodiscard]] std::string decoded() const;
};

[[nodiscard]] bool isSameName(std::string_view one, std::string_view other);

/// Without the blanks and line breaks at both ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// Without escapes: "\n" is a line break, any other character stands for itself.
[[nodiscard]] std::string unescaped(std::string_view text);

/// The parts of a text between characters that are not escaped, still escaped.
[[nodiscard]] std::vector<std::string_view> split(std::string_view text, char separator);

/// The content lines of a document, which must outlive it.
class ContentLines
{
public:
    explicit ContentLines(std::string_view document)
        : m_rest(document)
    {}

    /// The next one, valid until the one after it is asked for; absent at the end. What is no
    /// content line is left out.
    [[nodiscard]] std::optional<ContentLine> next();

private:
    [[nodiscard]] std::string_view physicalLine();
    [[nodiscard]] bool isFolded() const;

    std::string_view m_rest;
    std::string m_joined;
};

} // namespace dugwise
