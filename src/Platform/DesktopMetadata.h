// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/MetadataItem.h"
#include "Platform/StandardFolders.h"
#include "Utilities/Clock.h"

namespace dugwise {

/// Reads what the programs of this desktop have written down about files:
/// - where a file came from, and when: the file's own attributes, else the download records of
///   Firefox, else those of Chromium, else the metadata of GVFS. A browser's record counts only for
///   a file of the recorded path and size, its newest first. The attributes have no date and take
///   that of the record; without one it is the file's birth, else its last change;
/// - when it was last used: the newest of the list of recently used files and KDE's activities;
/// - its content type by its name: a name of shared-mime-info, such as "application/pdf".
/// Stores are never locked or written; databases are read from private copies in `folders.cache`,
/// which are gone afterwards; what a program that died left of its copies goes with the next one. A
/// store that is broken or unknown adds nothing.
[[nodiscard]] std::unique_ptr<MetadataReader> desktopMetadataReader(const StandardFolders &folders,
                                                                    const Clock &clock);

/// The stores that are there, each as its program and path, such as "Firefox:
/// /home/…/places.sqlite".
[[nodiscard]] QStringList describeMetadataStores(const StandardFolders &folders);

} // namespace dugwise
