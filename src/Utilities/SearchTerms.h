// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/ParsedSearchIntent.h"

#include <string_view>
#include <vector>

namespace dugwise {

/// What one search looks for.
struct SearchTerms
{
    QStringList keywords; ///< widened by the synonym table
    QStringList phrases;
    std::optional<DateIntentParser::DateRange> dateRange;
    std::optional<FileType> fileType;
    bool includeScreenshots = false;

    /// Whether there is nothing to search for.
    [[nodiscard]] bool isEmpty() const;
};

/// The terms of a request: from the intent where there is one, else from the text itself.
[[nodiscard]] SearchTerms
effectiveTerms(const QString &query, const std::optional<ParsedSearchIntent> &intent, Instant now);

/// The keywords followed by their synonyms that are not among them yet.
[[nodiscard]] QStringList expandKeywords(const QStringList &keywords);

/// Lower-cased phrases that follow markers such as "called" and "about", in marker order.
[[nodiscard]] QStringList extractPhrases(const QString &query);

/// The keyword, then its simple English inflections; nothing is removed when two are equal.
[[nodiscard]] QStringList stemVariants(const QString &keyword);

/// The words of a lower-cased name, in order, repeats kept, as views into `name` (UTF-8).
[[nodiscard]] std::vector<std::string_view> tokenize(std::string_view name);

} // namespace dugwise
