// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/StoreFacts.h"
#include "Platform/Linux/StoreFile.h"

namespace dugwise {

/// The files of one tree of GVFS's metadata, $XDG_DATA_HOME/gvfs-metadata/NAME: itself and its
/// journal.
[[nodiscard]] QList<StoreFileState> gvfsTreeState(const QString &tree);

/// The values of metadata::download-uri in one tree and its journal, as Firefox and WebKit have
/// them written, for the paths below `root`. The files are read as GVFS documents them
/// (metadata/file-format.txt of GNOME/gvfs): GIO needs a session bus for it, starts services there
/// and waits up to 25 seconds for one that hangs. What is beyond 200,000 addresses, or all of it
/// after a stop, may be left out.
[[nodiscard]] StoreFacts
readGvfsMetadata(const QString &tree, const QString &root, const std::stop_token &stop);

} // namespace dugwise
