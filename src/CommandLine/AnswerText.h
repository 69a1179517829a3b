// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/ChatMessage.h"

namespace dugwise {

/// How an answer is dressed for reading.
struct TextStyle
{
    bool isTerminal = false; ///< with bold and dim type, else as bare text
    QString home;            ///< shown as ~
};

/// The answer and its numbered results, over several lines, the last one ended.
[[nodiscard]] QString answerText(const ChatMessage &answer, const TextStyle &style, Instant now);

} // namespace dugwise
