// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/CrossAppResult.h"
#include "Models/Records/DocumentInsightsResult.h"
#include "Models/Records/SearchResult.h"

namespace dugwise {

/// One message of the conversation.
struct ChatMessage
{
    QUuid id;            ///< random, given when the message is made
    QString content;     ///< an answer may hold ** bold ** markers
    bool isUser = false; ///< true for what the person typed
    Instant timestamp;   ///< when the message was made
    QList<SearchResult> results;
    QList<CrossAppResult> crossAppResults;
    std::optional<DocumentInsightsResult> insights;
};

} // namespace dugwise
