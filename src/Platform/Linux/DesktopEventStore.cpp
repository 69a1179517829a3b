// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DesktopEventStore.h"

#include "Platform/Linux/CollectionFolders.h"
#include "Platform/Linux/EvolutionDataServer.h"
#include "Platform/Linux/ThunderbirdStores.h"

#include <QSet>

#include <algorithm>
#include <cmath>
#include <utility>

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
constexpr qsizetype kFewStarts = 500;          // more than one a day
constexpr qsizetype kMostStarts = 200'000;     // in a store, of events that have more than few

/// Seconds, as AgendaProtocol has them.
struct Times
{
    qint64 from = 0;
    qint64 to = 0;

    /// Widened to multiples of `step`.
    [[nodiscard]] Times rounded(qint64 step) const
    {
        const auto floor = [step](qint64 time) { return time - ((time % step) + step) % step; };
        return {floor(from), floor(to) + step};
    }
};

/// When events may start that are in a span on a day's clocks anywhere.
Times startsIn(const DateRange &span, qint64 length)
{
    const auto limited = [](double seconds) {
        constexpr auto kEnd = static_cast<double>(kLastTime);
        return static_cast<qint64>(std::clamp(std::floor(seconds), -kEnd, kEnd));
    };
    return {limited(span.start.unixSeconds()) - length - kDay,
            limited(span.end.unixSeconds()) + kDay};
}

/// Finds the starts of a store's recurring events where they are not known yet.
class StartFinder
{
public:
    StartFinder(AgendaParser &parser, const DateRange &span, const QDeadlineTimer &deadline)
        : m_parser(parser)
        , m_span(span)
        , m_deadline(deadline)
    {}

    void find(StoreDocuments<CalendarItem> &documents)
    {
        QList<CalendarItem *> unknown;
        documents.forEach([&](CalendarItem &item) {
            if (item.recurring.isEmpty() || item.attempts.areUp())
                return;
            if (isKnown(item))
                count(item);
            else
                unknown.append(&item);
        });
        std::ranges::stable_sort(
            unknown, {}, [](const CalendarItem *item) { return item->attempts.begun; });
        QList<CalendarItem *> usual;
        qint64 longest = 0;
        for (CalendarItem *const item : std::as_const(unknown)) {
            if (!isUsual(*item))
                continue;
            usual.append(item);
            longest = std::max(longest, item->length.value_or(0));
        }
        ask(usual, startsIn(m_span, longest).rounded(kGrid));
        // The rest, each for what is asked now alone.
        for (CalendarItem *const item : std::as_const(unknown)) {
            if (!isUsual(*item) && !isKnown(*item))
                ask({item}, ownTimes(*item));
        }
    }

private:
    /// Whether it can be asked for together with others, over more than is needed.
    [[nodiscard]] static bool isUsual(const CalendarItem &item)
    {
        return !item.isFrequent && item.length.value_or(0) <= kGrid;
    }
    [[nodiscard]] Times ownTimes(const CalendarItem &item) const
    {
        return startsIn(m_span, item.length.value_or(0)).rounded(kDay);
    }
    [[nodiscard]] bool isKnown(const CalendarItem &item) const
    {
        const Times own = startsIn(m_span, item.length.value_or(0));
        return item.knownFrom <= own.from && own.to <= item.knownTo;
    }

    void ask(const QList<CalendarItem *> &items, const Times &times)
    {
        const QList<AgendaParser::Reading> readings = m_parser.read(
            {
                .task = AgendaProtocol::Task::occurrences,
                .earliest = times.from,
                .latest = times.to,
                .documents = items.size(),
                .text = [&items](qsizetype i) { return items[i]->recurring; },
            },
            m_deadline);
        for (qsizetype i = 0; i < items.size(); ++i)
            take(*items[i], readings[i], times);
    }

    void take(CalendarItem &item, const AgendaParser::Reading &reading, const Times &times)
    {
        item.attempts.count(reading.outcome);
        const bool isRead = reading.outcome == AgendaParser::Reading::Outcome::read;
        // Where nothing is told, its recurrence is beyond the parser.
        if (item.attempts.areUp() || (isRead && reading.records.isEmpty()))
            item.starts = {item.firstStart};
        if (!isRead)
            return;
        const QStringList fields = reading.records.value(0);
        if (isUsual(item) && fields.value(0) == "more"_L1) {
            item.isFrequent = true;
            return;
        }
        item.knownFrom = times.from;
        item.knownTo = times.to;
        if (fields.isEmpty())
            return;
        item.starts.clear();
        for (const QString &start : fields.sliced(1))
            item.starts.append(start.toLongLong());
        if (count(item) > kMostStarts)
            item.starts.clear();
    }

    /// The starts so far of events that have many; those must not fill the memory.
    qsizetype count(const CalendarItem &item)
    {
        if (item.starts.size() <= kFewStarts)
            return 0;
        m_starts += item.starts.size();
        return m_starts;
    }

    AgendaParser &m_parser;
    DateRange m_span;
    QDeadlineTimer m_deadline;
    qsizetype m_starts = 0;
};

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
        StartFinder(parser, span, deadline).find(documents);
        documents.forEach([&](const CalendarItem &item) { occurrences.add(item); });
    };
    read(m_evolution, [&](const QDeadlineTimer &deadline) {
        return EvolutionDataServer(m_folders).calendars(span, deadline);
    });
    read(m_files, [&](const QDeadlineTimer &deadline) {
        return collectionFiles(calendarFolders(m_folders), ".ics", deadline);
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
