// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/CrossAppResult.h"
#include "Services/CalendarService.h"
#include "Services/MailSearchService.h"
#include "Services/MessagesService.h"

namespace dugwise {

/// The hits of the three sources as the conversation shows them, the first few of each.
[[nodiscard]] QList<CrossAppResult> crossAppResults(const QList<MailSearchResult> &mails);
[[nodiscard]] QList<CrossAppResult> crossAppResults(const QList<MessageSearchResult> &messages,
                                                    Instant now);
[[nodiscard]] QList<CrossAppResult> crossAppResults(const QList<CalendarSearchResult> &events);

} // namespace dugwise
