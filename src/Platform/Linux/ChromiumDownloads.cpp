// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/ChromiumDownloads.h"

namespace dugwise {

namespace {

constexpr double kUnixOffset = 11'644'473'600; // seconds from 1601 to 1970

// Columns: file, last address of the chain, referrer, page of the tab, end, bytes on the disk,
// bytes announced.
constexpr auto kQuery = R"(
    SELECT target_path,
           (SELECT url FROM downloads_url_chains chain
             WHERE chain.id = downloads.id ORDER BY chain_index DESC LIMIT 1),
           referrer, tab_url, end_time, received_bytes, total_bytes
      FROM downloads
     WHERE state = 1
     ORDER BY end_time DESC)";

} // namespace

StoreFacts readChromiumDownloads(const SQLiteDatabase &history, Instant now)
{
    StoreFacts facts;
    SQLiteStatement rows = history.prepare(kQuery);
    for (int row = 0; row < kMostStoreRecords && rows.step(); ++row) {
        const auto path = rows.text(0);
        if (!path)
            continue;
        const auto address = [&](int column) {
            return webAddress(rows.text(column).value_or(QString())).value_or(QString());
        };
        const QString referrer = address(2);
        facts.downloads[*path].append({
            .source = address(1),
            .referrer = referrer.isEmpty() ? address(3) : referrer,
            .date = storedDate(rows.real(4) / 1e6 - kUnixOffset, now),
            .size = rows.integer(5) > 0 ? rows.integer(5) : rows.integer(6),
        });
    }
    return facts;
}

} // namespace dugwise
