// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

#include <QDateTime>

namespace dugwise {

/// An instant on the local calendar, kept to the whole second below it.
[[nodiscard]] QDateTime localTime(Instant instant);

/// When a local day begins: its first midnight where clocks are set back over it, the first time
/// that it has where they are set forward.
[[nodiscard]] Instant startOfDay(QDate date);

/// The instant of a local date and time.
[[nodiscard]] Instant instant(const QDateTime &dateTime);

} // namespace dugwise
