// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-agenda/Zones.h"

#include "Helpers/dugwise-agenda/ContentLines.h"

#include <algorithm>

namespace dugwise {

namespace {

constexpr std::size_t kLongestDefinition = 65'536;
constexpr std::size_t kMostDefinitions = 200; // in a document
constexpr std::size_t kMostZones = 1000;      // remembered
constexpr int kMostRules = 40;
constexpr int kMostCommas = 8; // in a rule; "BYMONTHDAY=8,9,10,11,12,13,14" has six

/// Whether its rules are such as zones have, so that nobody computes for ever: once a year.
bool isHarmless(const std::string &definition)
{
    ContentLines lines(definition);
    int rules = 0;
    while (const auto line = lines.next()) {
        if (!line->isNamed("RRULE"))
            continue;
        if (++rules > kMostRules)
            return false;
        std::string rule(line->value);
        std::ranges::transform(
            rule, rule.begin(), [](char c) { return c >= 'a' && c <= 'z' ? char(c - 32) : c; });
        if (rule.find("FREQ=YEARLY") == std::string::npos
            || rule.find("FREQ=") != rule.rfind("FREQ=") || rule.find("RSCALE") != std::string::npos
            || rule.find("BYYEARDAY") != std::string::npos
            || rule.find("BYWEEKNO") != std::string::npos
            || std::ranges::count(rule, ',') > kMostCommas)
            return false;
    }
    return true;
}

using ZonePointer = std::shared_ptr<icaltimezone>;

void freeZone(icaltimezone *zone)
{
    ::icaltimezone_free(zone, 1);
}

ZonePointer makeZone(const std::string &definition)
{
    if (!isHarmless(definition))
        return {};
    icalcomponent *const component = ::icalparser_parse_string(definition.c_str());
    if (!component)
        return {};
    ZonePointer zone(::icaltimezone_new(), freeZone);
    if (::icalcomponent_isa(component) == ICAL_VTIMEZONE_COMPONENT
        && ::icaltimezone_set_component(zone.get(), component) != 0)
        return zone;
    ::icalcomponent_free(component);
    return {};
}

/// What was made of a definition before is used again.
ZonePointer definedZone(const std::string &definition)
{
    static std::map<std::string, ZonePointer> zones; // shared by the documents
    const auto known = zones.find(definition);
    if (known != zones.end())
        return known->second;
    if (zones.size() >= kMostZones)
        zones.clear();
    return zones[definition] = makeZone(definition);
}

icaltimezone *systemZone(std::string_view name)
{
    static std::map<std::string, icaltimezone *, std::less<>> zones;
    const auto known = zones.find(name);
    if (known != zones.end())
        return known->second;
    if (zones.size() >= kMostZones)
        zones.clear();
    icaltimezone *zone = nullptr; // the library's
    std::string_view rest = name;
    while (!zone && !rest.empty()) {
        zone = ::icaltimezone_get_builtin_timezone(std::string(rest).c_str());
        const std::size_t slash = rest.find('/');
        rest = slash == std::string_view::npos ? std::string_view() : rest.substr(slash + 1);
    }
    return zones[std::string(name)] = zone;
}

} // namespace

void Zones::define(std::string_view name, std::string definition)
{
    if (m_definitions.size() < kMostDefinitions && definition.size() <= kLongestDefinition)
        m_definitions.emplace(name, std::move(definition));
}

icaltimezone *Zones::find(std::string_view name) const
{
    if (isSameName(name, "UTC") || isSameName(name, "GMT") || isSameName(name, "Z")
        || isSameName(name, "Etc/UTC"))
        return ::icaltimezone_get_utc_timezone();
    const auto defined = m_definitions.find(name);
    if (defined == m_definitions.end())
        return systemZone(name);
    const ZonePointer zone = definedZone(defined->second);
    m_found.insert(zone);
    return zone ? zone.get() : systemZone(name);
}

std::string_view Zones::definition(std::string_view name) const
{
    const auto defined = m_definitions.find(name);
    return defined == m_definitions.end() ? std::string_view() : defined->second;
}

} // namespace dugwise
