// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/SQLiteDatabase.h"
#include "Platform/Linux/StoreFacts.h"

namespace dugwise {

/// The complete downloads in the History of a browser of Chromium's family, the newest first. Its
/// dates are microseconds since 1601-01-01 UTC, its states 1 for complete, and its addresses the
/// chain of redirections (components/history/core/browser/download_database.cc of
/// chromium/chromium).
[[nodiscard]] StoreFacts readChromiumDownloads(const SQLiteDatabase &history, Instant now);

} // namespace dugwise
