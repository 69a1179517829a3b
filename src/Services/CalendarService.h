// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/DateRange.h"
#include "Services/AccessRequest.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace dugwise {

/// One calendar event.
struct CalendarSearchResult
{
    QUuid id;           ///< random, given when the record is made
    QString eventTitle; ///< empty when it has none
    Instant eventDate;  ///< its start
    std::optional<Instant> endDate;
    std::optional<QString> location;
    std::optional<QString> notes;
    double relevanceScore = 0; ///< share of the query's words found in the event

    bool operator==(const CalendarSearchResult &) const = default;
};

[[nodiscard]] size_t qHash(const CalendarSearchResult &result, size_t seed = 0);

/// Finds calendar events. Access changes on the UI thread, before the first search; the searches
/// read files and ask services, at most a second long, and are for one worker at a time.
class CalendarService
{
public:
    /// `platform` outlives the service.
    explicit CalendarService(Platform &platform);
    Q_DISABLE_COPY_MOVE(CalendarService)
    virtual ~CalendarService() = default;

    /// Asks for access; hasAccess() then tells the answer.
    [[nodiscard]] virtual QCoro::Task<void> requestAccess(Asking asking);
    [[nodiscard]] virtual bool hasAccess() const;
    /// The ten events of `dateRange`, or else of the last six months, whose titles, notes and
    /// locations hold most of the query's words of more than two characters; best first, and of
    /// equal ones in the calendar's order. None without access.
    [[nodiscard]] virtual QList<CalendarSearchResult>
    searchEvents(const QString &query,
                 const std::optional<DateIntentParser::DateRange> &dateRange) const;
    /// From a day before to two days after the start of the event of the last six months that
    /// `text` matches best.
    [[nodiscard]] virtual std::optional<DateIntentParser::DateRange>
    findDateAnchor(const QString &text) const;

private:
    const Platform &m_platform;
    AccessRequest m_access;
};

} // namespace dugwise
