// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

#include <QString>

namespace dugwise {

/// How units are named in relative times.
enum class UnitStyle {
    full,
    abbreviated,
};

/// `then` told relative to `now` in the user's locale, in the largest whole calendar unit:
/// "3 days ago", "in 2 hours".
[[nodiscard]] QString relativeTime(Instant then, Instant now, UnitStyle style = UnitStyle::full);

/// A local date and time in the user's locale: a date of medium length, hours and minutes.
[[nodiscard]] QString dateAndTime(Instant instant);

/// A number with the English noun for what it counts: "1 file", "2 files".
[[nodiscard]] QString counted(qint64 count, const QString &noun);

/// A byte count in decimal units in the user's locale: "2.1 MB".
[[nodiscard]] QString byteCount(qint64 bytes);

/// The host of an address in its ASCII form; empty when it has none.
[[nodiscard]] QString hostOf(const QString &address);

/// The host of an address in its ASCII form, or the text itself when it has none.
[[nodiscard]] QString sourceName(const QString &source);

} // namespace dugwise
