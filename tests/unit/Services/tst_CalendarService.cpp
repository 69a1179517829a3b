// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/CalendarService.h"
#include "support/Fakes.h"
#include "support/LocalZone.h"
#include "support/SampleHome.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

using DateIntentParser::DateRange;

namespace {

StoredEvent meeting(const QString &title, const QString &notes = {}, const QString &location = {})
{
    return {.title = title,
            .notes = notes,
            .location = location,
            .start = at(u"2026-03-10T14:00:00.5"_s),
            .end = std::nullopt};
}

} // namespace

class TstCalendarService : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<SampleHome> m_home;
    FakeEventStore *m_store = nullptr;

    /// Over the store of this test, with the person's answer given before.
    std::unique_ptr<CalendarService> service(bool hasAccess = true)
    {
        setAccessAnswer(m_home->platform.userDefaults, PersonalData::calendar, hasAccess);
        auto service = std::make_unique<CalendarService>(m_home->platform);
        QCoro::waitFor(service->requestAccess(Asking::once));
        return service;
    }

private Q_SLOTS:
    void init()
    {
        setZone(u"Europe/Berlin"_s); // where clocks are set forward on 29 March
        m_home = std::make_unique<SampleHome>();
        m_home->platform.clock = Clock(at(u"2026-08-31T12:00:00.25"_s));
        m_store = &install<FakeEventStore>(m_home->platform.eventStore);
    }
    void cleanup() { m_home.reset(); }

    void scoresByTheShareOfTheWords_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QStringList>("found"); // each with its score
        const auto row = [](const char *name, const QString &query, const QStringList &found) {
            QTest::newRow(name) << query << found;
        };
        row("two of three words", u"sync with Sarah"_s, {u"Sarah / sync 0.667"_s});
        row("short words do not count", u"Q3 ok"_s, {});
        row("nor do they lower the share", u"Q3 sync"_s, {u"Sarah / sync 1"_s});
        row("three characters, not bytes", u"éà"_s, {});
        row("no words", u"  "_s, {});
        row("none matches", u"dentist"_s, {});
        row("in the notes", u"BRING"_s, {u"Party 1"_s});
        row("in the location", u"pier"_s, {u"Party 1"_s});
        row("parts of words", u"art"_s, {u"Party 1"_s});
        row("not across the parts", u"partybring"_s, {});
        row("in any case beyond ASCII", u"ÜBERGABE"_s, {u"Übergabe 1"_s});
        row("a word twice counts twice",
            u"sarah sarah party"_s,
            {u"Sarah / sync 0.667"_s, u"Party 0.333"_s});
        row("equal ones in the calendar's order",
            u"sarah party"_s,
            {u"Sarah / sync 0.5"_s, u"Party 0.5"_s});
        row("only blanks part words", u"sarah\tsync"_s, {});
        row("without a title", u"untitled"_s, {u" 1"_s});
    }
    void scoresByTheShareOfTheWords()
    {
        m_store->events = {meeting(u"Sarah / sync"_s),
                           meeting(u"Party"_s, u"bring cake"_s, u"The Pier"_s),
                           meeting(u"Übergabe"_s),
                           meeting(u""_s, u"untitled"_s)};
        QFETCH(QString, query);
        QStringList found;
        for (const CalendarSearchResult &result : service()->searchEvents(query, std::nullopt)) {
            found.append(result.eventTitle + u' ' + QString::number(result.relevanceScore, 'g', 3));
        }
        QTEST(found, "found");
    }

    void keepsTheTenBest()
    {
        for (int i = 0; i < 12; ++i)
            m_store->events.append(meeting(u"party %1"_s.arg(i), i % 6 == 0 ? u""_s : u"cake"_s));
        QStringList titles;
        for (const auto &result : service()->searchEvents(u"party cake"_s, std::nullopt))
            titles.append(result.eventTitle.section(u' ', 1));
        QCOMPARE(titles.join(u' '), u"1 2 3 4 5 7 8 9 10 11"_s);
    }

    void makesRecords()
    {
        m_store->events = {meeting(u"Party"_s), meeting(u"Party"_s, u"cake"_s, u"pier"_s)};
        m_store->events[1].end = at(u"2026-03-10T15:00:00"_s);
        const QList<CalendarSearchResult> results =
            service()->searchEvents(u"party"_s, std::nullopt);
        QCOMPARE(results.size(), 2);
        CalendarSearchResult expected{.id = results[0].id,
                                      .eventTitle = u"Party"_s,
                                      .eventDate = at(u"2026-03-10T14:00:00.5"_s),
                                      .endDate = std::nullopt,
                                      .location = std::nullopt,
                                      .notes = std::nullopt,
                                      .relevanceScore = 1};
        QVERIFY(results[0] == expected);
        expected.id = results[1].id;
        QVERIFY(results[1] != expected);
        expected.endDate = m_store->events[1].end;
        expected.notes = u"cake"_s;
        expected.location = u"pier"_s;
        QVERIFY(results[1] == expected);
        QCOMPARE(qHash(results[1]), qHash(expected));
        QVERIFY(results[0].id != results[1].id);
    }

    void asksForTheSpan()
    {
        const auto calendar = service();
        const DateRange range{Instant{1}, Instant{2}};
        QVERIFY(calendar->searchEvents(u"party"_s, range).isEmpty());
        QVERIFY(calendar->searchEvents(u"party"_s, std::nullopt).isEmpty());
        QVERIFY(!calendar->findDateAnchor(u"party"_s));
        // Six months before 31 August: February has fewer days.
        const DateRange lately{at(u"2026-02-28T12:00:00.25"_s), at(u"2026-08-31T12:00:00.25"_s)};
        QCOMPARE(m_store->spans.size(), 3);
        QVERIFY(m_store->spans == QList({range, lately, lately}));
    }

    void anchorsTheDaysAroundTheBestEvent()
    {
        m_store->events = {meeting(u"Lunch, Sarah"_s), meeting(u"Sarah Lee"_s)};
        m_store->events[1].start = at(u"2026-03-28T13:00:00.5Z"_s);
        const auto calendar = service();
        QVERIFY(calendar->findDateAnchor(u"sarah"_s)
                == DateRange(at(u"2026-03-09T14:00:00.5"_s), at(u"2026-03-12T14:00:00.5"_s)));
        // The same time of day, over the change of the clocks.
        QVERIFY(calendar->findDateAnchor(u"sarah lee"_s)
                == DateRange(at(u"2026-03-27T13:00:00.5Z"_s), at(u"2026-03-30T12:00:00.5Z"_s)));
        QVERIFY(!calendar->findDateAnchor(u"Jo"_s));
    }

    void readsNothingWithoutAccess()
    {
        m_store->events = {meeting(u"party"_s)};
        const auto refused = service(false);
        QVERIFY(!refused->hasAccess());
        QVERIFY(refused->searchEvents(u"party"_s, std::nullopt).isEmpty());
        QVERIFY(!refused->findDateAnchor(u"party"_s));
        QVERIFY(m_store->spans.isEmpty());
        m_home->platform.eventStore.reset();
        const auto without = service();
        QVERIFY(!without->hasAccess());
        QVERIFY(without->searchEvents(u"party"_s, std::nullopt).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TstCalendarService)
#include "tst_CalendarService.moc"
