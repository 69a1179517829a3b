// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AccessPrompt.h"
#include "Utilities/Outcome.h"

#include <QString>
#include <QStringList>

namespace dugwise {

/// What a command line asks for.
struct Arguments
{
    enum class Command {
        window,
        ask,
        chat,
        foldersList,
        foldersAdd,
        foldersRemove,
        index,
        preview,
        status,
        accessList,
        accessGrant,
        accessDeny,
        selfTest,
        help,
        version,
    };

    Command command = Command::window;
    QString request; ///< of ask, and of the window, where it may be empty
    QString folder;  ///< of folders add and folders remove: absolute
    QString file;    ///< of preview: absolute
    PersonalData source = PersonalData::calendar; ///< of access grant and access deny
    QString pictures; ///< of the self-test: an absolute folder, or empty
    bool json = false;
    bool useSemantic = true;
    bool useSystemSearch = true;
    bool useModel = true;
};

/// Reads the words behind the program's name; a failure says in one line what is wrong.
[[nodiscard]] Outcome<Arguments> parseArguments(const QStringList &words);

/// What --help prints.
[[nodiscard]] QString helpText();

} // namespace dugwise
