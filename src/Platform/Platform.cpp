// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Platform.h"

#include <cstdio>

using namespace Qt::StringLiterals;

namespace dugwise {

Platform::Platform(StandardFolders standardFolders)
    : folders(std::move(standardFolders))
    , userDefaults(folders.config + "/Dugwise.ini"_L1)
    , log([](const QString &line) {
        std::fputs(qPrintable(line + u'\n'), stdout);
        std::fflush(stdout);
    })
{}

} // namespace dugwise
