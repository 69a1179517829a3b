// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine/Access.h"

#include "CommandLine/CommandLine.h"
#include "Platform/Platform.h"
#include "Services/AccessRequest.h"

#include <cstdio>

using namespace Qt::StringLiterals;

namespace dugwise {

int runAccess(Platform &platform, const Arguments &arguments)
{
    UserDefaults &defaults = platform.userDefaults;
    if (arguments.command != Arguments::Command::accessList) {
        const bool isGranted = arguments.command == Arguments::Command::accessGrant;
        setAccessAnswer(defaults, arguments.source, isGranted);
        if (!defaults.stored().result()) {
            complain(u"the answer cannot be stored"_s);
            return 1;
        }
    }
    for (const PersonalData data : kAllPersonalData) {
        const std::optional<bool> answer = accessAnswer(defaults, data);
        const QString state = !answer ? u"not asked yet"_s : *answer ? u"granted"_s : u"denied"_s;
        std::fputs(qPrintable(u"%1  %2\n"_s.arg(nameOf(data), state)), stdout);
    }
    std::fflush(stdout);
    return std::ferror(stdout) == 0 ? 0 : 1;
}

} // namespace dugwise
