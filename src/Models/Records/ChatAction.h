// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/SearchResult.h"

namespace dugwise {

/// What a chat command asks to be done with one earlier result.
struct ChatAction
{
    enum class Kind {
        openFile,
        getInsights,
    };

    Kind kind = Kind::openFile;
    SearchResult target;
};

} // namespace dugwise
