// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-agenda/Recurrences.h"

#include "Helpers/dugwise-agenda/Moments.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <set>

namespace dugwise {

namespace {

using Steady = std::chrono::steady_clock;

constexpr std::size_t kMost = 5000;
constexpr std::chrono::milliseconds kLongest{100};
constexpr std::chrono::milliseconds kLongestOfStarts{60}; // what is left is for exceptions
constexpr int kStepsBetweenLooks = 256;                   // at the clock
constexpr std::int64_t kDay = 86'400;

struct Span
{
    std::int64_t earliest = 0;
    std::int64_t latest = 0;

    [[nodiscard]] bool contains(std::int64_t time) const
    {
        return earliest <= time && time <= latest;
    }
};

/// The day of a time on its clocks, as a number.
int dayOf(const icaltimetype &wall)
{
    return (wall.year * 100 + wall.month) * 100 + wall.day;
}

/// On the clocks of the event, by their seconds.
using Starts = std::map<std::int64_t, Moment>;

void add(const Moment &moment, const Span &span, Starts &starts)
{
    const std::int64_t seconds = moment.seconds();
    if (span.contains(seconds) && starts.size() < kMost)
        starts.emplace(seconds, moment);
}

/// On the clocks of the event's zone; what is a date ends with that day.
void setEnd(icalrecurrencetype &rule, const Moment &start)
{
    if (::icaltime_is_null_time(rule.until) != 0)
        return;
    if (rule.until.is_date != 0 && !start.isDate()) {
        rule.until.is_date = 0;
        rule.until.hour = 23;
        rule.until.minute = rule.until.second = 59;
    } else if (::icaltime_is_utc(rule.until) != 0) {
        const Moment until{.wall = rule.until, .zone = ::icaltimezone_get_utc_timezone()};
        rule.until = wallIn(until, start.zone);
    }
    if (start.isDate())
        rule.until.is_date = 1;
    rule.until.zone = nullptr;
}

/// Seconds from one to the next of what a rule with hours or less counts; 0 where it is longer.
std::int64_t shortPeriod(const icalrecurrencetype &rule)
{
    switch (rule.freq) {
    case ICAL_HOURLY_RECURRENCE:
        return std::int64_t{3600} * rule.interval;
    case ICAL_MINUTELY_RECURRENCE:
        return std::int64_t{60} * rule.interval;
    case ICAL_SECONDLY_RECURRENCE:
        return rule.interval;
    default:
        return 0;
    }
}

/// False when the time was up before its end.
bool addRule(const std::string &text,
             const Moment &start,
             const Span &span,
             Steady::time_point end,
             Starts &starts)
{
    icalrecurrencetype rule = ::icalrecurrencetype_from_string(text.c_str());
    if (rule.freq == ICAL_NO_RECURRENCE)
        return true;
    setEnd(rule, start);
    // A day is more than clocks are apart from those of UTC. Counted ones begin with the first.
    constexpr std::int64_t kMargin = 2 * kDay;
    const std::int64_t before = span.earliest - kMargin - start.wallSeconds();
    const bool isSkipping = rule.count == 0 && before > 0;
    // libical loses count of hours, minutes and seconds when it is to start later.
    const std::int64_t period = isSkipping && !start.isDate() ? shortPeriod(rule) : 0;
    const icaltimetype first =
        period > 0 ? moved(start, before / period * period).wall : start.wall;
    const std::unique_ptr<icalrecur_iterator, decltype(&::icalrecur_iterator_free)> iterator(
        ::icalrecur_iterator_new(rule, first), ::icalrecur_iterator_free);
    if (!iterator)
        return true;
    if (isSkipping && period <= 0) {
        icaltimetype from = ::icaltime_from_timet_with_zone(
            span.earliest - kMargin, start.isDate() ? 1 : 0, nullptr);
        ::icalrecur_iterator_set_start(iterator.get(), from);
    }
    for (int step = 1; starts.size() < kMost; ++step) {
        Moment occurrence{.wall = ::icalrecur_iterator_next(iterator.get()), .zone = start.zone};
        if (::icaltime_is_null_time(occurrence.wall) != 0
            || occurrence.wallSeconds() > span.latest + kMargin)
            return true;
        if (step % kStepsBetweenLooks == 0 && Steady::now() > end)
            return false;
        add(occurrence, span, starts);
    }
    return true;
}

/// The times of RDATE and EXDATE; of a period, its start. Those without a zone are on the clocks of
/// the event.
std::vector<Moment> moments(const ContentLine &line, const Moment &start, const Zones &zones)
{
    std::vector<Moment> found;
    for (std::string_view value : split(line.value, ',')) {
        value = value.substr(0, value.find('/'));
        std::optional<Moment> moment = parseMoment(line, value, zones);
        if (!moment)
            continue;
        if (moment->isFloating() && !moment->isDate())
            moment->zone = start.zone;
        found.push_back(*moment);
    }
    return found;
}

/// Whether a start is this one or later; of days, on that day or later.
bool isFrom(const Moment &start, const Moment &first)
{
    return start.isDate() || first.isDate() ? dayOf(start.wall) >= dayOf(first.wall)
                                            : start.seconds() >= first.seconds();
}

/// What of a series' starts is taken away again.
struct Exceptions
{
    Starts starts;
    std::set<int> days;
    std::optional<Moment> from; ///< with all later ones

    /// Unless it is as early as the occurrence whose change is looked at.
    void addFrom(const Moment &moment, const std::optional<Moment> &changed)
    {
        const bool isEarly = changed && isFrom(*changed, moment);
        if (!isEarly && (!from || isFrom(*from, moment)))
            from = moment;
    }
    [[nodiscard]] bool contain(std::int64_t seconds, const Moment &start) const
    {
        return starts.contains(seconds) || days.contains(dayOf(start.wall))
               || (from && isFrom(start, *from));
    }
};

/// What an event makes of the occurrence that it stands in for, and of all later ones.
struct Change
{
    Moment from;            ///< the occurrence, on the clocks of the series
    std::int64_t delay = 0; ///< on the clocks
    icaltimezone *zone = nullptr;

    static std::optional<Change>
    by(const Calendar::Event &event, const Moment &seriesStart, const Zones &zones)
    {
        const auto replaced = ContentLine::parse(event.recurrenceId);
        const auto own = ContentLine::parse(event.start);
        if (!replaced || !own)
            return std::nullopt;
        const std::vector<Moment> occurrence = moments(*replaced, seriesStart, zones);
        const auto start = parseMoment(*own, own->value, zones);
        if (occurrence.empty() || !start)
            return std::nullopt;
        const Moment from{.wall = wallIn(occurrence.front(), seriesStart.zone),
                          .zone = seriesStart.zone};
        return Change{from, start->wallSeconds() - from.wallSeconds(), start->zone};
    }

    /// Where starts are before the change that are in the span behind it.
    [[nodiscard]] Span before(const Span &span) const
    {
        return {std::max(span.earliest - delay, from.seconds()) - kDay, span.latest - delay + kDay};
    }
    [[nodiscard]] Moment changed(const Moment &start) const
    {
        Moment later = moved(start, delay);
        later.zone = zone;
        return later;
    }
};

/// Adds up the lines of a series.
class SeriesStarts
{
public:
    /// `changed`: the occurrence whose change is looked at, if it is that.
    SeriesStarts(const Moment &start, const Span &span, std::optional<Moment> changed)
        : m_start(start)
        , m_span(span)
        , m_changed(changed)
    {
        add(changed.value_or(start), span, m_starts);
    }

    void take(const ContentLine &line, const Zones &zones)
    {
        const bool isRule = line.isNamed("RRULE");
        if (isRule || line.isNamed("EXRULE")) {
            m_areAll &= addRule(std::string(trimmed(line.value)),
                                m_start,
                                m_span,
                                m_begin + (isRule ? kLongestOfStarts : kLongest),
                                isRule ? m_starts : m_exceptions.starts);
            return;
        }
        for (const Moment &moment : moments(line, m_start, zones)) {
            if (line.isNamed("RDATE"))
                add(moment, m_span, m_starts);
            else if (line.isThisAndFuture())
                m_exceptions.addFrom(moment, m_changed);
            else if (moment.isDate() || m_start.isDate())
                m_exceptions.days.insert(dayOf(moment.wall));
            else
                m_exceptions.starts.emplace(moment.seconds(), moment);
        }
    }
    [[nodiscard]] bool areAll() const
    {
        return m_areAll && m_starts.size() < kMost && m_exceptions.starts.size() < kMost;
    }
    /// What is left of them; of a change, from the changed occurrence on.
    [[nodiscard]] Starts left()
    {
        std::erase_if(m_starts, [this](const auto &start) {
            return m_exceptions.contain(start.first, start.second)
                   || (m_changed && !isFrom(start.second, *m_changed));
        });
        return std::move(m_starts);
    }

private:
    Moment m_start;
    Span m_span;
    std::optional<Moment> m_changed;
    Steady::time_point m_begin = Steady::now();
    Starts m_starts;
    Exceptions m_exceptions;
    bool m_areAll = true;
};

} // namespace

Occurrences occurrences(const Calendar &calendar, std::int64_t earliest, std::int64_t latest)
{
    const Calendar::Event &series = calendar.events.front();
    const auto first = ContentLine::parse(series.start);
    const auto start = first ? parseMoment(*first, first->value, calendar.zones) : std::nullopt;
    if (!start)
        return {};
    std::optional<Change> change;
    if (calendar.events.size() > 1)
        change = Change::by(calendar.events[1], *start, calendar.zones);
    const Span asked{earliest, latest};
    SeriesStarts starts(*start,
                        change ? change->before(asked) : asked,
                        change ? std::optional(change->from) : std::nullopt);
    for (const std::string &recurrence : series.recurrences) {
        if (const auto line = ContentLine::parse(recurrence))
            starts.take(*line, calendar.zones);
    }
    Occurrences found{.starts = {}, .areAll = starts.areAll()};
    for (const auto &[seconds, moment] : starts.left()) {
        const std::int64_t time = change ? change->changed(moment).seconds() : seconds;
        if (asked.contains(time))
            found.starts.push_back(time);
    }
    return found;
}

} // namespace dugwise
