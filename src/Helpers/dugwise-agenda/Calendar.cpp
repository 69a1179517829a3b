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

/// Takes a document's lines one after the other.
class Reader
{
public:
    void read(const ContentLine &line)
    {
        const bool isBegin = line.isNamed("BEGIN");
        const bool isEnd = line.isNamed("END");
        if (isBegin)
            begin(line);
        if (m_zone)
            m_zone->take(line);
        else if (m_event && m_depth == 0 && !isBegin && !isEnd)
            takeProperty(*m_event, line);
        if (isEnd)
            end(line);
    }
    [[nodiscard]] Calendar calendar() { return std::move(m_calendar); }

private:
    struct Definition
    {
        std::string name;
        std::string lines;

        void take(const ContentLine &line)
        {
            lines.append(line.whole).append("\n");
            if (line.isNamed("TZID"))
                name = line.value;
        }
    };

    /// An event or a zone that begins ends the one before it, which was left unfinished.
    void begin(const ContentLine &line)
    {
        if (line.isValue(kEvent)) {
            m_event.emplace();
            m_zone.reset();
            m_depth = 0;
        } else if (line.isValue(kZone)) {
            m_zone.emplace();
            m_event.reset();
        } else {
            ++m_depth;
        }
    }

    void end(const ContentLine &line)
    {
        if (m_zone && line.isValue(kZone)) {
            m_calendar.zones.define(m_zone->name, std::move(m_zone->lines));
            m_zone.reset();
        } else if (m_event && line.isValue(kEvent)) {
            if (!m_event->start.empty() && m_calendar.events.size() < kMostItems)
                m_calendar.events.push_back(std::move(*m_event));
            m_event.reset();
        } else if (m_depth > 0) {
            --m_depth;
        }
    }

    Calendar m_calendar;
    std::optional<Calendar::Event> m_event;
    std::optional<Definition> m_zone;
    int m_depth = 0; ///< of components within the event, such as alarms
};

} // namespace

bool Calendar::Event::isThisAndFuture() const
{
    const auto line = ContentLine::parse(recurrenceId);
    return line && line->isThisAndFuture();
}

Calendar Calendar::parse(std::string_view document)
{
    Reader reader;
    ContentLines lines(document);
    while (const auto line = lines.next())
        reader.read(*line);
    return reader.calendar();
}

} // namespace dugwise
