// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/DateRange.h"
#include "Platform/Linux/StoreDocuments.h"
#include "Platform/StandardFolders.h"

namespace dugwise {

/// Evolution Data Server, which keeps GNOME's calendars and address books, asked over the session
/// bus (by its interfaces of version 3.46). It is started where it has kept something for this
/// person before; nothing is changed in it. Whatever does not answer before the deadline is not
/// there. Callable from any thread; waits for answers: for workers.
class EvolutionDataServer
{
public:
    explicit EvolutionDataServer(const StandardFolders &folders);

    /// Whether it runs, or can be started. Does not start it.
    [[nodiscard]] bool isThere(const QDeadlineTimer &deadline) const;

    /// A document for each calendar that is switched on: the events that may lie in a span, and all
    /// that recur.
    [[nodiscard]] QList<StoreDocument> calendars(const DateIntentParser::DateRange &span,
                                                 const QDeadlineTimer &deadline) const;
    /// A document for each address book that is switched on: the entries whose names have all of
    /// these words, folded, somewhere. Directories in the network are left out, because they would
    /// be sent the words.
    [[nodiscard]] QList<StoreDocument> addressBooks(const QStringList &words,
                                                    const QDeadlineTimer &deadline) const;

private:
    bool m_hasKeptSomething;
};

} // namespace dugwise
