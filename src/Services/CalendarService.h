// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/DateRange.h"

#include <QCoroTask>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace dugwise {

/// One calendar event.
struct CalendarSearchResult
{
    QUuid id;
    QString eventTitle;
    Instant eventDate; ///< its start
    std::optional<Instant> endDate;
    std::optional<QString> location;
    std::optional<QString> notes;
    double relevanceScore = 0; ///< share of the query's words found in the event
};

/// Finds calendar events. As it stands here there is no calendar to ask for, access is never
/// granted and nothing is found.
class CalendarService
{
public:
    CalendarService() = default;
    Q_DISABLE_COPY_MOVE(CalendarService)
    virtual ~CalendarService() = default;

    /// Asks for access; hasAccess() then tells the answer.
    [[nodiscard]] virtual QCoro::Task<void> requestAccess();
    [[nodiscard]] virtual bool hasAccess() const;
    /// Best first.
    [[nodiscard]] virtual QList<CalendarSearchResult>
    searchEvents(const QString &query,
                 const std::optional<DateIntentParser::DateRange> &dateRange) const;
    /// The days around the event that `text` matches best.
    [[nodiscard]] virtual std::optional<DateIntentParser::DateRange>
    findDateAnchor(const QString &text) const;
};

} // namespace dugwise
