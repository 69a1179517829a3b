// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EventStore.h"
#include "Platform/Linux/AgendaParser.h"

namespace dugwise {

/// An event that a calendar's document holds, with all of its occurrences.
struct CalendarItem
{
    QString uid{};
    QString title{};
    QString notes{};
    QString location{};
    bool isFloating = false; ///< its times are local ones, wherever that is
    std::optional<qint64> length{};
    /// When it starts, as AgendaProtocol has times; what is known of a recurring event.
    QList<qint64> starts{};

    /// What it takes to find more of the starts; empty where it does not recur.
    QByteArray recurring{};
    qint64 knownFrom = 0; ///< of a recurring one, all starts are known between these
    qint64 knownTo = -1;
    bool isFrequent = false; ///< it has more than could be told at once
    qint64 firstStart = 0;
    AgendaParser::Attempts attempts{}; ///< to find its starts

    /// Of a record of events; absent when it is another's.
    [[nodiscard]] static std::optional<CalendarItem> fromRecord(const QStringList &fields);

    /// The instant of one of its times.
    [[nodiscard]] Instant instant(qint64 time) const;
};

} // namespace dugwise
