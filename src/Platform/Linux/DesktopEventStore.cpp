// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DesktopEventStore.h"

#include "Platform/Linux/CollectionFolders.h"
#include "Platform/Linux/EvolutionDataServer.h"
#include "Platform/Linux/ThunderbirdStores.h"

#include <QSet>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

using DateIntentParser::DateRange;

// Of the time that a source has: to have what is in it at hand, and to read one item of that.
constexpr double kFinding = 0.7;
constexpr double kReadingAnItem = 0.3;
constexpr qint64 kDay = 86'400;
/// Occurrences are looked for in spans that begin and end on multiples of this, so that the next
/// request finds them there.
constexpr qint64 kGrid = 64 * kDay;
constexpr qint64 kLastTime = qint64{1} << 40U; // far behind any calendar's end
constexpr int kMostAttempts = 3;

/// Rounded outwards, on a day's clocks anywhere.
std::pair<qint64, qint64> gridSpan(const DateRange &span, qint64 longest)
{
    const auto limited = [](double seconds) {
        constexpr auto kEnd = static_cast<double>(kLastTime);
        return static_cast<qint64>(std::clamp(std::floor(seconds), -kEnd, kEnd));
    };
    const qint64 from = limited(span.start.unixSeconds()) - longest - kDay;
    const qint64 to = limited(span.end.unixSeconds()) + kDay;
    const auto floorToGrid = [](qint64 time) { return time - ((time % kGrid) + kGrid) % kGrid; };
    return {floorToGrid(from), floorToGrid(to) + kGrid};
}

/// Finds the starts of recurring events where they are not known yet.
void findStarts(StoreDocuments<CalendarItem> &documents,
                AgendaParser &parser,
                const DateRange &span,
                const QDeadlineTimer &deadline)
{
    qint64 longest = 0;
    documents.forEach([&longest](const CalendarItem &item) {
        if (!item.recurring.isEmpty())
            longest = std::max(longest, item.length.value_or(0));
    });
    const auto [from, to] = gridSpan(span, longest);
    QList<CalendarItem *> unknown;
    documents.forEach([&, from = from, to = to](CalendarItem &item) {
        if (!item.recurring.isEmpty() && item.attempts < kMostAttempts
            && (from < item.knownFrom || to > item.knownTo))
            unknown.append(&item);
    });
    const QList<AgendaParser::Reading> readings = parser.read(
        {
            .task = AgendaProtocol::Task::occurrences,
            .earliest = from,
            .latest = to,
            .documents = unknown.size(),
            .text = [&unknown](qsizetype i) { return unknown[i]->recurring; },
        },
        deadline);
    for (qsizetype i = 0; i < unknown.size(); ++i) {
        CalendarItem &item = *unknown[i];
        using Outcome = AgendaParser::Reading::Outcome;
        item.attempts += readings[i].outcome == Outcome::late ? 1 : 0;
        if (readings[i].outcome != Outcome::read)
            continue;
        item.knownFrom = from;
        item.knownTo = to;
        item.starts.clear();
        for (const QString &start : readings[i].records.value(0))
            item.starts.append(start.toLongLong());
    }
}

/// The occurrences that lie in a span.
class Occurrences
{
public:
    explicit Occurrences(const DateRange &span)
        : m_span(span)
    {}

    void add(const CalendarItem &item)
    {
        for (const qint64 start : item.starts) {
            // Far away, whatever the local time: not worth a look at the calendar.
            const auto about = Instant::fromUnix(static_cast<double>(start));
            if (about.seconds > m_span.end.seconds + kDay
                || about.seconds + static_cast<double>(item.length.value_or(0) + kDay)
                       < m_span.start.seconds)
                continue;
            add(item, start);
        }
    }
    [[nodiscard]] QList<StoredEvent> byStart()
    {
        std::ranges::stable_sort(m_events, {}, &StoredEvent::start);
        return std::move(m_events);
    }

private:
    void add(const CalendarItem &item, qint64 time)
    {
        const Instant start = item.instant(time);
        const auto end =
            item.length ? std::optional(item.instant(time + *item.length)) : std::nullopt;
        const bool isOver = start < m_span.start && end.value_or(start) <= m_span.start;
        if (isOver || start > m_span.end)
            return;
        if (!item.uid.isEmpty()) {
            const auto identity = std::pair(item.uid, start);
            if (m_seen.contains(identity))
                return;
            m_seen.insert(identity);
        }
        m_events.append({.title = item.title,
                         .notes = item.notes,
                         .location = item.location,
                         .start = start,
                         .end = end});
    }

    DateRange m_span;
    QSet<std::pair<QString, Instant>> m_seen;
    QList<StoredEvent> m_events;
};

} // namespace

DesktopEventStore::DesktopEventStore(StandardFolders folders,
                                     QString parser,
                                     std::chrono::milliseconds time)
    : m_folders(std::move(folders))
    , m_parser(std::move(parser))
    , m_time(time)
{}

QList<StoredEvent> DesktopEventStore::eventsIn(const DateRange &span) const
{
    AgendaParser parser(m_parser, partOf(m_time, kReadingAnItem));
    Occurrences occurrences(span);
    const auto read = [&](Documents &documents, const auto &find) {
        const QDeadlineTimer deadline(m_time);
        const QList<StoreDocument> found = find(QDeadlineTimer(partOf(m_time, kFinding)));
        documents.update(parser, AgendaProtocol::Task::events, found, deadline);
        findStarts(documents, parser, span, deadline);
        documents.forEach([&](const CalendarItem &item) { occurrences.add(item); });
    };
    read(m_evolution, [&](const QDeadlineTimer &deadline) {
        return EvolutionDataServer(m_folders).calendars(span, deadline);
    });
    read(m_files, [&](const QDeadlineTimer &) {
        return collectionFiles(calendarFolders(m_folders), ".ics");
    });
    read(m_thunderbird, [&](const QDeadlineTimer &deadline) {
        return calendarDocuments(thunderbirdCalendars(m_folders), m_folders.cache, deadline);
    });
    return occurrences.byStart();
}

QStringList DesktopEventStore::sources() const
{
    QStringList lines;
    if (EvolutionDataServer(m_folders).isThere(QDeadlineTimer(m_time)))
        lines.append(u"Evolution Data Server"_s);
    lines += folderDescriptions(calendarFolders(m_folders), m_folders.home);
    if (!thunderbirdCalendars(m_folders).isEmpty())
        lines.append(u"Thunderbird"_s);
    return lines;
}

} // namespace dugwise
