// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/ResourceScores.h"

#include "Utilities/FileUri.h"

namespace dugwise {

namespace {

constexpr auto kScores = R"(
    SELECT targettedResource, lastUpdate, 0
      FROM ResourceScoreCache ORDER BY lastUpdate DESC)";
constexpr auto kEvents = R"(
    SELECT targettedResource, start, "end"
      FROM ResourceEvent ORDER BY start DESC)";

} // namespace

StoreFacts readResourceScores(const SQLiteDatabase &resources, Instant now)
{
    StoreFacts facts;
    for (const char *query : {kScores, kEvents}) {
        SQLiteStatement rows = resources.prepare(query);
        for (int row = 0; row < kMostStoreRecords && rows.step(); ++row) {
            const QString resource = rows.text(0).value_or(QString());
            const auto path =
                resource.startsWith(u'/') ? std::optional(resource) : pathOfFileUri(resource);
            if (!path)
                continue;
            facts.addUse(*path, storedDate(rows.real(1), now));
            facts.addUse(*path, storedDate(rows.real(2), now));
        }
    }
    return facts;
}

} // namespace dugwise
