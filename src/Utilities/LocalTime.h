// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

#include <QDateTime>

namespace dugwise {

/// An instant on the local calendar, kept to the whole second below it.
[[nodiscard]] QDateTime localTime(Instant instant);

/// The instant of a local date and time.
[[nodiscard]] Instant instant(const QDateTime &dateTime);

} // namespace dugwise
