// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/AccessQuestion.h"

using namespace Qt::StringLiterals;

namespace dugwise {

AccessQuestion accessQuestion(PersonalData data)
{
    const QString promise = u"It changes nothing, and nothing leaves this machine."_s;
    if (data == PersonalData::calendar) {
        return {
            .title = u"May Dugwise read your calendar?"_s,
            .whatIsRead = u"It reads titles, times, places and notes of events, to show them in "
                          "answers and to find files by when you met somebody."_s,
            .promise = promise,
        };
    }
    return {
        .title = u"May Dugwise read your contacts?"_s,
        .whatIsRead = u"It reads names, e-mail addresses and telephone numbers, to know whom you "
                      "mean when you name somebody."_s,
        .promise = promise,
    };
}

} // namespace dugwise
