// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/DateRange.h"
#include "Models/Records/FileType.h"

#include <QStringList>

#include <optional>

/// Rough signals of a request that need no language model. Phrases are matched as plain substrings
/// of the lower-cased request.
namespace dugwise::DateIntentParser {

/// The span of time that the request names, counted back from `now` on the local calendar.
[[nodiscard]] std::optional<DateRange> parse(const QString &text, Instant now);

/// Content words, lower-cased, in order, repeats kept; filler and time words are left out.
[[nodiscard]] QStringList extractKeywords(const QString &text);

/// The kind of file that the request names.
[[nodiscard]] std::optional<FileType> extractFileTypeIntent(const QString &text);

} // namespace dugwise::DateIntentParser
