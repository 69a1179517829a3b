// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace dugwise {

/// What is asked of every search service: plain text, in which no service's query syntax counts.
struct SearchRequest
{
    QString text; ///< without white space at its ends, not empty
    bool isByName = false;
};

/// The paths that one service gives at most.
constexpr qsizetype kMostPathsOfOneService = 80;

/// Whether a file can be called something with the text in it, and be told on a line.
[[nodiscard]] bool canBeInName(const QString &text);

/// The words of a text that a file's content or attributes must have, lower-cased, in any order:
/// what stands between white space and the characters that steer a query, without the punctuation
/// at its ends ("3.14", "foo_bar"). The filler words of a request ("show me the") are left out,
/// unless there is nothing else.
[[nodiscard]] QStringList contentWords(const QString &text);

/// The request as Baloo reads it; empty when there is nothing to look for. For names, those that
/// have words that begin as the text's do, among which are all that Baloo knows with the text in
/// them: it finds no inner parts of words.
[[nodiscard]] QString balooQuery(const SearchRequest &request);

/// The text as plocate reads it: each character stands for itself.
[[nodiscard]] QString plocatePattern(const QString &text);

} // namespace dugwise
