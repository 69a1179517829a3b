// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/DateRange.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace dugwise {

/// One occurrence of an event, as a calendar keeps it. What the calendar leaves out is empty.
struct StoredEvent
{
    QString title;
    QString notes;
    QString location;
    Instant start;
    std::optional<Instant> end;

    bool operator==(const StoredEvent &) const = default;
};

/// The calendars that the person's other programs keep. Callable from any thread, one call at a
/// time.
class EventStore
{
public:
    EventStore() = default;
    Q_DISABLE_COPY_MOVE(EventStore)
    virtual ~EventStore() = default;

    /// The events of all calendars that overlap `span`, recurring ones once for each occurrence in
    /// it, by their start. A calendar that cannot be read, or does not answer within a second, adds
    /// nothing. Reads files and asks services: for workers.
    [[nodiscard]] virtual QList<StoredEvent>
    eventsIn(const DateIntentParser::DateRange &span) const = 0;
    /// What is read, for people: a line for each source that is there, empty when there is none.
    /// Looks only whether they are there; nothing of theirs is read.
    [[nodiscard]] virtual QStringList sources() const = 0;
};

} // namespace dugwise
