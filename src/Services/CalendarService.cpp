// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/CalendarService.h"

#include "Models/Records/Hash.h"
#include "Platform/Platform.h"
#include "Utilities/LocalTime.h"
#include "Utilities/Text.h"

#include <algorithm>
#include <array>
#include <map>

namespace dugwise {

namespace {

using DateIntentParser::DateRange;

constexpr qsizetype kMostEvents = 10;
constexpr int kMonthsBack = 6;
constexpr std::size_t kShortestWord = 3; // characters

QStringList wordsOf(const QString &query)
{
    QStringList words = lowerCased(query).split(u' ', Qt::SkipEmptyParts);
    words.removeIf([](const QString &word) { return characterCount(word) < kShortestWord; });
    return words;
}

std::optional<QString> unlessEmpty(const QString &text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

/// How many of the words are in the event, a word listed twice counted twice.
qsizetype matches(const StoredEvent &event, const QStringList &words)
{
    const QString text = lowerCased(event.title + u' ' + event.notes + u' ' + event.location);
    return std::ranges::count_if(words, [&](const QString &word) { return text.contains(word); });
}

} // namespace

size_t qHash(const CalendarSearchResult &result, size_t seed)
{
    return qHashMulti(seed,
                      result.id,
                      result.eventTitle,
                      result.eventDate,
                      hashOf(result.endDate),
                      hashOf(result.location),
                      hashOf(result.notes),
                      result.relevanceScore);
}

CalendarService::CalendarService(Platform &platform)
    : m_platform(platform)
    , m_access(platform, PersonalData::calendar)
{}

QCoro::Task<void> CalendarService::requestAccess(Asking asking)
{
    std::function<QStringList()> sources;
    if (const EventStore *const store = m_platform.eventStore.get())
        sources = [store] { return store->sources(); };
    return m_access.ask(asking, sources);
}

bool CalendarService::hasAccess() const
{
    return m_access.isGranted();
}

QList<CalendarSearchResult>
CalendarService::searchEvents(const QString &query, const std::optional<DateRange> &dateRange) const
{
    QList<CalendarSearchResult> results;
    const QStringList words = wordsOf(query);
    if (!hasAccess() || words.isEmpty())
        return results;
    const Instant now = m_platform.clock.now();
    const DateRange lately{calendarTimeBefore(now, {.months = kMonthsBack}), now};
    // The occurrences of an event share their texts, and are looked at once.
    std::map<std::array<const QChar *, 3>, qsizetype> known;
    const QList<StoredEvent> events = m_platform.eventStore->eventsIn(dateRange.value_or(lately));
    for (const StoredEvent &event : events) {
        const auto [place, isNew] = known.try_emplace(
            {event.title.constData(), event.notes.constData(), event.location.constData()});
        if (isNew)
            place->second = matches(event, words);
        const qsizetype found = place->second;
        if (found == 0)
            continue;
        results.append({
            .id = QUuid::createUuid(),
            .eventTitle = event.title,
            .eventDate = event.start,
            .endDate = event.end,
            .location = unlessEmpty(event.location),
            .notes = unlessEmpty(event.notes),
            .relevanceScore = static_cast<double>(found) / static_cast<double>(words.size()),
        });
    }
    std::ranges::stable_sort(
        results, std::ranges::greater(), &CalendarSearchResult::relevanceScore);
    results.resize(std::min(results.size(), kMostEvents));
    return results;
}

std::optional<DateRange> CalendarService::findDateAnchor(const QString &text) const
{
    const QList<CalendarSearchResult> events = searchEvents(text, std::nullopt);
    if (events.isEmpty())
        return std::nullopt;
    const Instant start = events.first().eventDate;
    return DateRange{calendarTimeBefore(start, {.days = 1}),
                     calendarTimeBefore(start, {.days = -2})};
}

} // namespace dugwise
