// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-agenda/Recurrences.h"

#include "Helpers/dugwise-agenda/Moments.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
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

/// Starts with the day that each is on, on the clocks of the event.
using Starts = std::map<std::int64_t, int>;

void add(const Moment &moment, const Span &span, Starts &starts)
{
    const std::int64_t seconds = moment.seconds();
    if (span.contains(seconds) && starts.size() < kMost)
        starts.emplace(seconds, dayOf(moment.wall));
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

std::vector<std::int64_t>
without(const Starts &exceptions, const std::set<int> &exceptDays, const Starts &starts)
{
    std::vector<std::int64_t> left;
    for (const auto &[seconds, day] : starts) {
        if (!exceptions.contains(seconds) && !exceptDays.contains(day))
            left.push_back(seconds);
    }
    return left;
}

} // namespace

Occurrences occurrences(const std::string &startLine,
                        const std::vector<std::string> &recurrences,
                        const Zones &zones,
                        std::int64_t earliest,
                        std::int64_t latest)
{
    const Steady::time_point begin = Steady::now();
    const auto first = ContentLine::parse(startLine);
    const auto start = first ? parseMoment(*first, first->value, zones) : std::nullopt;
    if (!start)
        return {};
    const Span span{earliest, latest};
    Starts starts;
    Starts exceptions;
    std::set<int> exceptDays;
    Occurrences found;
    add(*start, span, starts);
    for (const std::string &recurrence : recurrences) {
        const auto line = ContentLine::parse(recurrence);
        if (!line)
            continue;
        if (line->isNamed("RRULE") || line->isNamed("EXRULE")) {
            const bool isRule = line->isNamed("RRULE");
            found.areAll &= addRule(std::string(trimmed(line->value)),
                                    *start,
                                    span,
                                    begin + (isRule ? kLongestOfStarts : kLongest),
                                    isRule ? starts : exceptions);
            continue;
        }
        for (const Moment &moment : moments(*line, *start, zones)) {
            if (line->isNamed("RDATE"))
                add(moment, span, starts);
            else if (moment.isDate() || start->isDate())
                exceptDays.insert(dayOf(moment.wall));
            else
                exceptions.emplace(moment.seconds(), 0);
        }
    }
    found.areAll &= starts.size() < kMost && exceptions.size() < kMost;
    found.starts = without(exceptions, exceptDays, starts);
    return found;
}

} // namespace dugwise
