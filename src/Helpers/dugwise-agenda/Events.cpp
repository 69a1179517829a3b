// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-agenda/Events.h"

#include "Helpers/dugwise-agenda/Calendar.h"
#include "Helpers/dugwise-agenda/Moments.h"
#include "Helpers/dugwise-agenda/Recurrences.h"

#include <memory>
#include <set>
#include <unordered_map>

namespace dugwise {

namespace {

constexpr std::size_t kRecurrenceIdSize = std::string_view("RECURRENCE-ID").size();

/// Occurrences that others stand in for are not to come up again: has the others of the same UID
/// except them.
void exceptReplaced(std::vector<Calendar::Event> &events)
{
    std::unordered_map<std::string, std::vector<std::string>> replaced;
    for (const Calendar::Event &event : events) {
        if (!event.recurrenceId.empty() && !event.uid.empty())
            replaced[event.uid].push_back("EXDATE" + event.recurrenceId.substr(kRecurrenceIdSize));
    }
    for (Calendar::Event &event : events) {
        const auto found = replaced.find(event.uid);
        if (event.recurrenceId.empty() && !event.recurrences.empty() && found != replaced.end())
            event.recurrences.insert(
                event.recurrences.end(), found->second.begin(), found->second.end());
    }
}

/// The event's times alone, as a document by themselves.
std::string recurringDocument(const Calendar::Event &event, const Zones &zones)
{
    std::string lines = "BEGIN:VEVENT\n" + event.start + "\n";
    std::set<std::string_view> zoneNames;
    const auto addZone = [&zoneNames](std::string_view text) {
        if (const auto line = ContentLine::parse(text))
            zoneNames.insert(line->parameter("TZID"));
    };
    addZone(event.start);
    for (const std::string &recurrence : event.recurrences) {
        addZone(recurrence);
        lines += recurrence + "\n";
    }
    std::string definitions;
    for (const std::string_view name : zoneNames)
        definitions += zones.definition(name);
    return definitions + lines + "END:VEVENT\n";
}

void tell(const Calendar::Event &event, const Zones &zones, std::uint32_t number, Records &records)
{
    const auto line = ContentLine::parse(event.start);
    const auto start = line ? parseMoment(*line, line->value, zones) : std::nullopt;
    if (!start)
        return;
    const bool isRecurring = !event.recurrences.empty() && event.recurrenceId.empty();
    const std::string recurring = isRecurring ? recurringDocument(event, zones) : std::string();
    if (recurring.size() > Records::kMostOfWhole)
        return;
    records.begin(number);
    records.text(event.uid);
    records.text(start->isFloating() ? "floating" : "");
    records.number(start->seconds());
    const auto length = lengthOf(*start, event.end, event.duration, zones);
    records.text(length ? std::to_string(*length) : std::string());
    records.text(event.title);
    records.text(event.notes);
    records.text(event.location);
    records.whole(recurring);
    records.end();
}

} // namespace

void addEvents(std::uint32_t number, std::string_view document, std::vector<Item> &items)
{
    const auto calendar = std::make_shared<Calendar>(Calendar::parse(document));
    exceptReplaced(calendar->events);
    for (const Calendar::Event &event : calendar->events) {
        if (event.isCancelled)
            continue;
        items.emplace_back([calendar, &event, number](Records &records) {
            tell(event, calendar->zones, number, records);
        });
    }
}

void addOccurrences(std::uint32_t number,
                    std::string_view document,
                    std::int64_t earliest,
                    std::int64_t latest,
                    std::vector<Item> &items)
{
    const auto calendar = std::make_shared<Calendar>(Calendar::parse(document));
    if (calendar->events.empty())
        return;
    items.emplace_back([calendar, number, earliest, latest](Records &records) {
        const Calendar::Event &event = calendar->events.front();
        const Occurrences found =
            occurrences(event.start, event.recurrences, calendar->zones, earliest, latest);
        records.begin(number);
        records.text(found.areAll ? "" : "more");
        for (const std::int64_t start : found.starts)
            records.number(start);
        records.end();
    });
}

} // namespace dugwise
