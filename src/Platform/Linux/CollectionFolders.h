// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/StoreDocuments.h"
#include "Platform/StandardFolders.h"

namespace dugwise {

/// Folders in which programs keep a file for each event or contact, or one for many (vdir), as far
/// as they exist.
///
/// Of events: $XDG_DATA_HOME/calendars, ~/.calendars, and those that khal's configuration names.
[[nodiscard]] QStringList calendarFolders(const StandardFolders &folders);
/// Of contacts: $XDG_DATA_HOME/contacts, ~/.contacts, and those that khard's configuration names.
[[nodiscard]] QStringList contactFolders(const StandardFolders &folders);

/// "folder PATH" for each, where "~" is the home folder.
[[nodiscard]] QStringList folderDescriptions(const QStringList &paths, const QString &home);

/// The files in these folders and in those within, whose names end like this; each once, in the
/// order of the folders and then of the names. Hidden ones are left out, and links not followed;
/// what is not found until the deadline, too.
[[nodiscard]] QList<StoreDocument>
collectionFiles(const QStringList &roots, const QByteArray &suffix, const QDeadlineTimer &deadline);

} // namespace dugwise
