// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/TextContent.h"

#include <QString>

#include <string>
#include <string_view>
#include <vector>

/// Operations on UTF-8 text. A character is what a person perceives as one (an extended grapheme
/// cluster); all lower-casing is the full, locale-independent one of Unicode.
namespace dugwise {

/// The UTF-8 bytes of a text as a view; the array must outlive it.
[[nodiscard]] std::string_view view(const QByteArray &utf8);

/// UTF-8 as a QString, with all that is in it: Qt's own conversions drop a byte order mark.
[[nodiscard]] QString toQString(std::string_view utf8);

[[nodiscard]] std::string lowerCased(std::string_view utf8);
[[nodiscard]] QString lowerCased(const QString &text);

/// A record's text with its lower-cased form; `utf8` must be valid.
[[nodiscard]] TextContent makeTextContent(QByteArray utf8);

/// Number of characters.
[[nodiscard]] std::size_t characterCount(std::string_view utf8);
[[nodiscard]] std::size_t characterCount(const QString &text);

/// The characters in order, as views into `utf8`.
[[nodiscard]] std::vector<std::string_view> characters(std::string_view utf8);

/// Length in bytes of the first `count` characters, or of the whole text when it has no more.
[[nodiscard]] std::size_t prefixLength(std::string_view utf8, std::size_t count);

/// The first `count` characters, or the whole text when it has no more.
[[nodiscard]] QString firstCharacters(const QString &text, std::size_t count);

/// The runs of letters, combining marks and numbers that have at least two characters, in order,
/// as views into `utf8`. Everything else separates.
[[nodiscard]] std::vector<std::string_view> words(std::string_view utf8);

/// Without the blanks and tabs at both ends; line breaks stay.
[[nodiscard]] std::string_view trimmedBlanks(std::string_view utf8);

} // namespace dugwise
