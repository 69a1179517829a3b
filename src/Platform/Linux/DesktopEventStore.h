// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EventStore.h"
#include "Platform/Linux/CalendarItem.h"
#include "Platform/Linux/StoreDocuments.h"
#include "Platform/StandardFolders.h"

#include <chrono>

namespace dugwise {

/// The calendars of Evolution Data Server, folders of .ics files, as vdirsyncer and khal keep them,
/// and Thunderbird's calendars. None of them is ever changed. What was read is kept in memory, and
/// read again when it has changed. Each source has a second; cancelled events are left out, and an
/// event that two sources have (by UID and start) is the first one's.
class DesktopEventStore final : public EventStore
{
public:
    /// `parser` is the path of dugwise-agenda; each source has `time`.
    DesktopEventStore(StandardFolders folders,
                      QString parser,
                      std::chrono::milliseconds time = std::chrono::seconds(1));

    [[nodiscard]] QList<StoredEvent>
    eventsIn(const DateIntentParser::DateRange &span) const override;
    [[nodiscard]] QStringList sources() const override;

private:
    using Documents = StoreDocuments<CalendarItem>;

    StandardFolders m_folders;
    QString m_parser;
    std::chrono::milliseconds m_time;
    mutable Documents m_evolution;
    mutable Documents m_files;
    mutable Documents m_thunderbird;
};

} // namespace dugwise
