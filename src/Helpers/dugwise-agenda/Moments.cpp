// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-agenda/Moments.h"

#include <algorithm>
#include <chrono>

namespace dugwise {

namespace {

constexpr std::int64_t kDay = 86'400;
constexpr std::int64_t kLongest = 400 * kDay * 10; // of an event

/// The decimal number of exactly these digits; negative when it is none.
int number(std::string_view digits)
{
    int value = 0;
    for (const char digit : digits) {
        if (digit < '0' || digit > '9')
            return -1;
        value = value * 10 + (digit - '0');
    }
    return digits.empty() ? -1 : value;
}

std::int64_t secondsOf(const icaltimetype &wall)
{
    const auto day = std::chrono::sys_days(std::chrono::year(wall.year) / wall.month / wall.day);
    const std::int64_t days = day.time_since_epoch().count();
    return days * kDay + std::int64_t{wall.hour} * 3600 + std::int64_t{wall.minute} * 60
           + wall.second;
}

icaltimetype wallOf(std::int64_t seconds)
{
    const std::chrono::sys_seconds time{std::chrono::seconds(seconds)};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    icaltimetype wall = ::icaltime_null_time();
    wall.year = static_cast<int>(date.year());
    wall.month = static_cast<int>(static_cast<unsigned>(date.month()));
    wall.day = static_cast<int>(static_cast<unsigned>(date.day()));
    wall.hour = static_cast<int>(clock.hours().count());
    wall.minute = static_cast<int>(clock.minutes().count());
    wall.second = static_cast<int>(clock.seconds().count());
    return wall;
}

/// YYYYMMDD or YYYYMMDDTHHMMSS.
std::optional<icaltimetype> parseWall(std::string_view text)
{
    icaltimetype wall = ::icaltime_null_time();
    if (text.size() != 8 && (text.size() != 15 || (text[8] != 'T' && text[8] != 't')))
        return std::nullopt;
    wall.year = number(text.substr(0, 4));
    wall.month = number(text.substr(4, 2));
    wall.day = number(text.substr(6, 2));
    wall.is_date = text.size() == 8 ? 1 : 0;
    const std::chrono::year_month_day date(std::chrono::year(wall.year),
                                           std::chrono::month(static_cast<unsigned>(wall.month)),
                                           std::chrono::day(static_cast<unsigned>(wall.day)));
    if (wall.year < 1 || !date.ok())
        return std::nullopt;
    if (wall.is_date != 0)
        return wall;
    wall.hour = number(text.substr(9, 2));
    wall.minute = number(text.substr(11, 2));
    wall.second = std::min(number(text.substr(13, 2)), 59); // but for leap seconds
    if (wall.hour < 0 || wall.hour > 23 || wall.minute < 0 || wall.minute > 59 || wall.second < 0)
        return std::nullopt;
    return wall;
}

/// Seconds that a zone's clocks are ahead of UTC at a time on these clocks.
int offsetAt(icaltimezone *zone, icaltimetype wall)
{
    int isDaylight = 0;
    return ::icaltimezone_get_utc_offset(zone, &wall, &isDaylight);
}

} // namespace

std::int64_t Moment::wallSeconds() const
{
    return secondsOf(wall);
}

std::int64_t Moment::seconds() const
{
    return wallSeconds() - (isFloating() ? 0 : offsetAt(zone, wall));
}

std::optional<Moment>
parseMoment(const ContentLine &line, std::string_view value, const Zones &zones)
{
    value = trimmed(value);
    const bool isUtc = value.size() == 16 && (value.back() == 'Z' || value.back() == 'z');
    if (isUtc)
        value.remove_suffix(1);
    const std::optional<icaltimetype> wall = parseWall(value);
    if (!wall)
        return std::nullopt;
    Moment moment{.wall = *wall};
    if (moment.isDate()) // the same day wherever one is
        return moment;
    const std::string_view zoneName = line.parameter("TZID");
    icaltimezone *const zone = zoneName.empty() ? nullptr : zones.find(zoneName);
    if (!isUtc) {
        moment.zone = zone;
        return moment;
    }
    moment.zone = ::icaltimezone_get_utc_timezone();
    if (zone) {
        moment.wall = wallIn(moment, zone);
        moment.zone = zone;
    }
    return moment;
}

Moment moved(const Moment &moment, std::int64_t seconds)
{
    return {.wall = wallOf(moment.wallSeconds() + seconds), .zone = moment.zone};
}

icaltimetype wallIn(const Moment &moment, icaltimezone *zone)
{
    if (moment.isFloating() || !zone || moment.zone == zone)
        return moment.wall;
    const std::int64_t seconds = moment.seconds();
    icaltimetype utc = wallOf(seconds);
    int isDaylight = 0;
    return wallOf(seconds + ::icaltimezone_get_utc_offset_of_utc_time(zone, &utc, &isDaylight));
}

std::optional<std::int64_t> lengthOf(const Moment &start,
                                     std::string_view endLine,
                                     std::string_view durationLine,
                                     const Zones &zones)
{
    std::optional<std::int64_t> length;
    if (const auto line = ContentLine::parse(endLine)) {
        const std::optional<Moment> end = parseMoment(*line, line->value, zones);
        if (end && end->isFloating() == start.isFloating())
            length = end->seconds() - start.seconds();
        else if (end)
            length = end->wallSeconds() - start.wallSeconds();
    } else if (const auto duration = ContentLine::parse(durationLine)) {
        const icaldurationtype parsed =
            ::icaldurationtype_from_string(std::string(trimmed(duration->value)).c_str());
        if (::icaldurationtype_is_bad_duration(parsed) == 0)
            length = ::icaldurationtype_as_int(parsed);
    } else if (start.isDate()) {
        length = kDay;
    }
    return length && *length >= 0 && *length <= kLongest ? length : std::nullopt;
}

} // namespace dugwise
