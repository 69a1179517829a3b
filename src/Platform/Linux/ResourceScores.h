// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/SQLiteDatabase.h"
#include "Platform/Linux/StoreFacts.h"

namespace dugwise {

/// When files were last used as KDE's activity manager has it: ResourceScoreCache.lastUpdate and
/// the start and end of each ResourceEvent, in seconds since 1970; a resource is a path or a
/// "file:" URI (ResourcesDatabaseSchema.cpp of KDE/kactivitymanagerd).
[[nodiscard]] StoreFacts readResourceScores(const SQLiteDatabase &resources, Instant now);

} // namespace dugwise
