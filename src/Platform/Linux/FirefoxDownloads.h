// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/SQLiteDatabase.h"
#include "Platform/Linux/StoreFacts.h"

namespace dugwise {

/// The finished downloads in a places.sqlite whose files have not been deleted, the newest first.
/// Firefox keeps a download as two annotations of its address: downloads/destinationFileURI and
/// downloads/metaData, a JSON object with state (1: finished), deleted, endTime (ms since 1970) and
/// fileSize; a visit of the kind 7 leads back to the page (DownloadHistory.sys.mjs,
/// nsINavHistoryService.idl of mozilla/gecko-dev).
[[nodiscard]] StoreFacts readFirefoxDownloads(const SQLiteDatabase &places, Instant now);

} // namespace dugwise
