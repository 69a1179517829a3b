// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AccessPrompt.h"

#include <QString>

namespace dugwise {

/// How the person is asked whether something may be read.
struct AccessQuestion
{
    QString title;      ///< the question
    QString whatIsRead; ///< and what for
    QString promise;
};

[[nodiscard]] AccessQuestion accessQuestion(PersonalData data);

} // namespace dugwise
