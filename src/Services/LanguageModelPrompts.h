// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/CrossAppResult.h"
#include "Models/Records/SearchResult.h"

#include <QString>

/// What the language model is told. How little of the findings it is shown is decided here.
namespace dugwise::LanguageModelPrompts {

// What it is to be, one text for each kind of request.
[[nodiscard]] QString queryParserInstructions();
[[nodiscard]] QString answerWriterInstructions();
[[nodiscard]] QString documentAnalystInstructions();
[[nodiscard]] QString resultRankerInstructions();

/// Asks for an answer about what was found: six results and five of other applications at most.
[[nodiscard]] QString answerPrompt(const QString &query,
                                   const QList<SearchResult> &results,
                                   const QList<CrossAppResult> &crossAppResults,
                                   Instant now);

/// Asks what a document says, of which the first 3,000 characters are shown.
[[nodiscard]] QString insightsPrompt(const QString &text, const QString &fileName);

/// Asks for the order of all `candidates`, numbered from 0.
[[nodiscard]] QString
rankingPrompt(const QString &query, const QList<SearchResult> &candidates, Instant now);

} // namespace dugwise::LanguageModelPrompts
