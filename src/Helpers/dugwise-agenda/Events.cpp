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

/// Events that stand in for all later occurrences; what a calendar has beyond stands in for one.
constexpr int kMostOfThisAndFuture = 100;
constexpr std::size_t kRecurrenceIdSize = std::string_view("RECURRENCE-ID").size();

/// Occurrences that others stand in for are not to come up again: has the others of the same UID
/// except them, and where a RANGE says so, all later ones.
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

/// By UID, those whose later occurrences others may stand in for.
using Series = std::unordered_map<std::string_view, const Calendar::Event *>;

Series seriesAmong(const std::vector<Calendar::Event> &events)
{
    Series series;
    for (const Calendar::Event &event : events) {
        if (event.recurrenceId.empty() && !event.recurrences.empty() && !event.uid.empty())
            series.emplace(event.uid, &event);
    }
    return series;
}

/// What it takes to find the occurrences of a series, or those that the event of it stands in for:
/// their times alone, as a document by themselves.
std::string
recurringDocument(const Calendar::Event &series, const Calendar::Event &event, const Zones &zones)
{
    std::string lines;
    std::set<std::string_view> zoneNames;
    const auto add = [&](const std::string &text) {
        if (const auto line = ContentLine::parse(text))
            zoneNames.insert(line->parameter("TZID"));
        lines += text + "\n";
    };
    lines += "BEGIN:VEVENT\n";
    add(series.start);
    for (const std::string &recurrence : series.recurrences) {
        if (lines.size() > Records::kMostOfWhole)
            return lines;
        add(recurrence);
    }
    lines += "END:VEVENT\n";
    if (&event != &series) {
        lines += "BEGIN:VEVENT\n";
        add(event.start);
        add(event.recurrenceId);
        lines += "END:VEVENT\n";
    }
    std::string definitions;
    for (const std::string_view name : zoneNames)
        definitions += zones.definition(name);
    return definitions + lines;
}

/// `series`: whose occurrences it has; null where it is one by itself.
void tell(const Calendar::Event &event,
          const Calendar::Event *series,
          const Zones &zones,
          std::uint32_t number,
          Records &records)
{
    const auto line = ContentLine::parse(event.start);
    const auto start = line ? parseMoment(*line, line->value, zones) : std::nullopt;
    if (!start)
        return;
    const auto replaced = ContentLine::parse(event.recurrenceId);
    if (replaced && !parseMoment(*replaced, replaced->value, zones))
        series = nullptr;
    const std::string recurring = series ? recurringDocument(*series, event, zones) : std::string();
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
    const Series known = seriesAmong(calendar->events);
    int ofThisAndFuture = 0;
    for (const Calendar::Event &event : calendar->events) {
        if (event.isCancelled)
            continue;
        const Calendar::Event *series = nullptr;
        if (event.recurrenceId.empty() && !event.recurrences.empty())
            series = &event;
        else if (const auto found = known.find(event.uid);
                 found != known.end() && event.isThisAndFuture()
                 && ++ofThisAndFuture <= kMostOfThisAndFuture)
            series = found->second;
        items.emplace_back([calendar, &event, series, number](Records &records) {
            tell(event, series, calendar->zones, number, records);
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
        const Occurrences found = occurrences(*calendar, earliest, latest);
        records.begin(number);
        records.text(found.areAll ? "" : "more");
        for (const std::int64_t start : found.starts)
            records.number(start);
        records.end();
    });
}

} // namespace dugwise
