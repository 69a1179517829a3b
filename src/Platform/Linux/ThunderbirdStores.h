// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/StoreDocuments.h"
#include "Platform/StandardFolders.h"

namespace dugwise {

/// What Thunderbird keeps in the databases of all its profiles, which are read with distrust and
/// never changed, also while it runs. A database of another schema gives an empty document; one
/// that is not read by the deadline, none.
///
/// The calendars of a profile and what it keeps of those in the network, as iCalendar.
[[nodiscard]] QList<StoreDocument> thunderbirdCalendars(const StandardFolders &folders,
                                                        const QDeadlineTimer &deadline);
/// The address books of a profile, and then the addresses that it has collected, as vCards.
[[nodiscard]] QList<StoreDocument> thunderbirdAddressBooks(const StandardFolders &folders,
                                                           const QDeadlineTimer &deadline);

} // namespace dugwise
