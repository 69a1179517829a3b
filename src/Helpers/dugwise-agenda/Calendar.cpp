// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-agenda/Calendar.h"

#include "Helpers/dugwise-agenda/ContentLines.h"
#include "Helpers/dugwise-agenda/Records.h"

#include <algorithm>
#include <array>
#include <optional>

namespace dugwise {

namespace {

constexpr std::string_view kEvent = "VEVENT";
constexpr std::string_view kZone = "VTIMEZONE";

void takeProperty(Calendar::Event &event, const ContentLine &line)
{
    const auto keepText = [&line](std::string &text) {
        if (text.empty())
            text = unescaped(line.decoded());
    };
    constexpr std::array<std::string_view, 4> kRecurrences{"RRULE", "RDATE", "EXDATE", "EXRULE"};
    if (line.isNamed("UID"))
        keepText(event.uid);
    else if (line.isNamed("SUMMARY"))
        keepText(event.title);
    else if (line.isNamed("DESCRIPTION"))
        keepText(event.notes);
    else if (line.isNamed("LOCATION"))
        keepText(event.location);
    else if (line.isNamed("STATUS"))
        event.isCancelled = line.isValue("CANCELLED");
    else if (line.isNamed("DTSTART"))
        event.start = line.whole;
    else if (line.isNamed("DTEND"))
        event.end = line.whole;
    else if (line.isNamed("DURATION"))
        event.duration = line.whole;
    else if (line.isNamed("RECURRENCE-ID"))
        event.recurrenceId = line.whole;
    else if (std::ranges::any_of(kRecurrences, [&](auto name) { return line.isNamed(name); }))
        event.recurrences.emplace_back(line.whole);
}

/// A VTIMEZONE that is being read.
struct Definition
{
    std::string name;
    std::string lines;
};

} // namespace

Calendar Calendar::parse(std::string_view document)
{
    Calendar calendar;
    std::optional<Event> event;
    std::optional<Definition> zone;
    int depth = 0; // of components within the event, such as alarms
    ContentLines lines(document);
    while (const auto line = lines.next()) {
        const bool isBegin = line->isNamed("BEGIN");
        const bool isEnd = line->isNamed("END");
        if (isBegin && line->isValue(kEvent)) {
            event.emplace();
            zone.reset();
            depth = 0;
        } else if (isBegin && line->isValue(kZone)) {
            zone.emplace();
            event.reset();
        }
        if (zone)
            zone->lines.append(line->whole).append("\n");
        if (zone && line->isNamed("TZID"))
            zone->name = line->value;
        if (zone && isEnd && line->isValue(kZone)) {
            calendar.zones.define(zone->name, std::move(zone->lines));
            zone.reset();
        } else if (event && isEnd && line->isValue(kEvent)) {
            if (!event->start.empty() && calendar.events.size() < kMostItems)
                calendar.events.push_back(std::move(*event));
            event.reset();
        } else if (event && isBegin && !line->isValue(kEvent)) {
            ++depth;
        } else if (event && isEnd) {
            --depth;
        } else if (event && depth == 0 && !isBegin) {
            takeProperty(*event, *line);
        }
    }
    return calendar;
}

} // namespace dugwise
