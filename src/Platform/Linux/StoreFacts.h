// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

#include <QHash>
#include <QList>
#include <QString>

#include <optional>

namespace dugwise {

/// One download as it was written down.
struct Download
{
    QString source;              ///< as webAddress() gives it; empty: unknown
    QString referrer;            ///< the page that led to it, likewise
    std::optional<Instant> date; ///< of its end
    qint64 size = 0;             ///< bytes; 0: unknown
};

/// What one store says about files, by their paths.
struct StoreFacts
{
    QHash<QString, QList<Download>> downloads;
    QHash<QString, Instant> lastUses;

    /// Keeps the newest use.
    void addUse(const QString &path, std::optional<Instant> date);
};

/// Records that are read of one store at most.
constexpr int kMostStoreRecords = 200'000;

/// The address without user name and password, for one of a server (http, ftp and the like); of
/// "blob:" the address of the page that made it. Absent for everything else and for longer than
/// 16,384 characters.
[[nodiscard]] std::optional<QString> webAddress(const QString &text);

/// A date of a store in seconds since 1970. Absent where it cannot be one: up to 1970, which stands
/// for "never", and more than a day ahead of `now`, when a clock was wrong.
[[nodiscard]] std::optional<Instant> storedDate(double unixSeconds, Instant now);

} // namespace dugwise
