// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/StoreDocuments.h"
#include "Platform/StandardFolders.h"

namespace dugwise {

/// The databases in which Thunderbird keeps the calendars of all its profiles, as far as they are
/// there: those of this machine, and what it has of those in the network.
[[nodiscard]] QStringList thunderbirdCalendars(const StandardFolders &folders);
/// Likewise its address books, and after a profile's the addresses that it has collected.
[[nodiscard]] QStringList thunderbirdAddressBooks(const StandardFolders &folders);

/// What is in these, as iCalendar and as vCards. They are read with distrust and never changed,
/// also while Thunderbird runs, if need be from a copy in `cacheFolder`. A database of another
/// schema gives an empty document; one that is not read by the deadline, none.
[[nodiscard]] QList<StoreDocument> calendarDocuments(const QStringList &databases,
                                                     const QString &cacheFolder,
                                                     const QDeadlineTimer &deadline);
[[nodiscard]] QList<StoreDocument> addressBookDocuments(const QStringList &databases,
                                                        const QString &cacheFolder,
                                                        const QDeadlineTimer &deadline);

} // namespace dugwise
