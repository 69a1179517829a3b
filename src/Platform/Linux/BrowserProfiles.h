// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/StandardFolders.h"

#include <QStringList>

namespace dugwise {

/// The folders of all profiles that Mozilla's programs keep below these folders, and of those that
/// a profiles.ini there points to; some more than once.
[[nodiscard]] QStringList profileFolders(const QStringList &roots);

/// The places.sqlite of every profile of Firefox and LibreWolf: where their packages, snaps and
/// flatpaks keep them, and where a profiles.ini points to.
[[nodiscard]] QStringList firefoxDatabases(const StandardFolders &folders);

/// The History of every profile of Chromium, Chrome, Brave, Vivaldi, Opera and Edge, likewise.
[[nodiscard]] QStringList chromiumDatabases(const StandardFolders &folders);

/// The folder of every profile of Thunderbird, likewise.
[[nodiscard]] QStringList thunderbirdProfiles(const StandardFolders &folders);

} // namespace dugwise
