// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/ChatAction.h"
#include "Models/Records/DocumentInsightsResult.h"

#include <QList>

#include <optional>

/// Requests that act on what was found before instead of searching.
namespace dugwise::ChatCommands {

/// The results that a request may refer to.
struct Earlier
{
    QList<SearchResult> lastResults;
    std::optional<SearchResult> selectedResult;
};

/// The command that a request is; none for a request that is to be searched for.
[[nodiscard]] std::optional<ChatAction> detectAction(const QString &text, const Earlier &earlier);

/// The result that a lower-cased request refers to: by number or place, else the selected or the
/// first one; none when there are no results.
[[nodiscard]] std::optional<SearchResult> resolveTarget(const QString &lowered,
                                                        const Earlier &earlier);

/// What the chat says of an opened file.
[[nodiscard]] QString openingText(const QString &fileName);
/// What the chat says of a document, in paragraphs with ** bold ** headings.
[[nodiscard]] QString insightsText(const QString &fileName, const DocumentInsightsResult &insights);
/// What the chat says when there is nothing to say of a document.
[[nodiscard]] QString noInsightsText(const QString &fileName);

} // namespace dugwise::ChatCommands
