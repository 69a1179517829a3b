// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace dugwise {

/// Where things are on this desktop; all paths are absolute.
struct StandardFolders
{
    QString home;
    /// As the desktop's user-dirs configuration names them, else the usual names below `home`.
    /// One that is set to the home folder itself is switched off there, and empty here.
    QString documents;
    QString downloads;
    QString desktop;
    QString data;   ///< what must be kept: $XDG_DATA_HOME/Dugwise
    QString config; ///< user defaults: $XDG_CONFIG_HOME/Dugwise
    QString cache;  ///< what can be made again: $XDG_CACHE_HOME/Dugwise

    /// $XDG_DATA_HOME and $XDG_CONFIG_HOME: where other programs keep theirs.
    [[nodiscard]] QString dataHome() const;
    [[nodiscard]] QString configHome() const;

    /// The folders of the person who runs the program (XDG Base Directory Specification and
    /// xdg-user-dirs, as QStandardPaths reads them).
    [[nodiscard]] static StandardFolders ofUser();
};

/// Makes `folder`, readable by its owner only, and what is missing above it as any other folder.
/// Failure is ignored: whatever is then written there fails with its own message.
void makePrivateFolder(const QString &folder);

} // namespace dugwise
