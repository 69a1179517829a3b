// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/ChatAction.h"
#include "Models/Records/ChatMessage.h"

namespace dugwise {

/// One request with its answer as a JSON object, UTF-8, on one line without its line feed. Absent
/// optional values are null; instants are seconds since 2001-01-01 UTC.
[[nodiscard]] QByteArray answerJson(const QString &request,
                                    const std::optional<ChatAction> &action,
                                    const ChatMessage &answer);

} // namespace dugwise
