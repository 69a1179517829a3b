// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AccessRequest.h"
#include "Views/SettingsModel.h"
#include "support/Fakes.h"
#include "support/SampleHome.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace dugwise::test {

namespace {

/// The application over an empty home with a calendar in it.
struct Running
{
    SampleHome home;
    FakeEventStore &events = install<FakeEventStore>(home.platform.eventStore);
    FakeAccessPrompt &prompt = install<FakeAccessPrompt>(home.platform.accessPrompt);
    std::optional<AppState> state{};
    std::optional<FileIndexer> indexer{};
    std::optional<SettingsModel> model{};

    bool start()
    {
        state.emplace(home.platform, AppServices(home.platform));
        indexer.emplace(home.platform);
        model.emplace(home.platform, *state, *indexer);
        return QTest::qWaitFor([this] { return state->isStarted() && !indexer->isBusy(); });
    }
    void look()
    {
        QSignalSpy changes(&*model, &SettingsModel::canAskChanged);
        model->lookForSources();
        QTRY_COMPARE(changes.size(), 2);
    }
};

} // namespace

class TstSettingsModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTheSwitches()
    {
        Running running;
        QVERIFY(running.start());
        QSignalSpy changes(&*running.model, &SettingsModel::switchesChanged);
        const QStringList keys = u"enableLocalIndexing includeHiddenFiles includeScreenshots "
                                 "includePDFs cloudSyncEnabled"_s.split(u' ');
        for (const QString &key : keys) {
            const bool before = running.model->property(key.toLatin1()).toBool();
            QCOMPARE(before,
                     key.startsWith(u"includeS") || key.startsWith(u"includeP")
                         || key.startsWith(u"enable"));
            for (const bool value : {!before, !before, before, !before}) {
                QVERIFY(running.model->setProperty(key.toLatin1(), value));
                QCOMPARE(running.model->property(key.toLatin1()).toBool(), value);
                QCOMPARE(running.home.platform.userDefaults.boolean(key), value);
            }
        }
        QCOMPARE(changes.size(), 3 * keys.size()); // none where nothing changed
    }

    void asksOnlyWhereThisIsPossible_data()
    {
        QTest::addColumn<bool>("hasStore");
        QTest::addColumn<bool>("hasCalendar");
        QTest::addColumn<bool>("hasPrompt");
        QTest::newRow("a calendar and a prompt") << true << true << true;
        QTest::newRow("nowhere to look") << false << true << true;
        QTest::newRow("no calendar") << true << false << true;
        QTest::newRow("no prompt") << true << true << false;
    }
    void asksOnlyWhereThisIsPossible()
    {
        QFETCH(bool, hasStore);
        QFETCH(bool, hasCalendar);
        QFETCH(bool, hasPrompt);
        Running running;
        if (!hasCalendar)
            running.events.there.clear();
        if (!hasStore)
            running.home.platform.eventStore.reset();
        if (!hasPrompt)
            running.home.platform.accessPrompt.reset();
        QVERIFY(running.start());
        QVERIFY(!running.model->canAskForCalendar());
        running.look();
        QCOMPARE(running.model->canAskForCalendar(), hasStore && hasCalendar && hasPrompt);
        QVERIFY(!running.model->canAskForContacts());
    }

    void asksAgain_data()
    {
        QTest::addColumn<std::optional<bool>>("before");
        QTest::addColumn<std::optional<bool>>("now");
        using Answer = std::optional<bool>;
        for (const Answer before : {Answer(), Answer(false)}) {
            for (const Answer now : {Answer(), Answer(false), Answer(true)}) {
                const auto name = [](const Answer &answer) {
                    return !answer ? "no answer" : *answer ? "yes" : "no";
                };
                QTest::addRow("%s, then %s", name(before), name(now)) << before << now;
            }
        }
    }
    void asksAgain()
    {
        QFETCH(std::optional<bool>, before);
        QFETCH(std::optional<bool>, now);
        Running running;
        if (before)
            running.prompt.answers.insert(PersonalData::calendar, *before);
        QVERIFY(running.start());
        QVERIFY(!running.state->calendarEnabled());
        running.look();

        running.prompt.answers.clear();
        if (now)
            running.prompt.answers.insert(PersonalData::calendar, *now);
        running.prompt.asked.clear();
        running.prompt.gate = std::make_shared<QPromise<void>>();
        running.prompt.gate->start();
        running.model->askForCalendar();
        QVERIFY(!running.model->canAskForCalendar());
        QTRY_COMPARE(running.prompt.asked, QList<PersonalData>{PersonalData::calendar});
        running.model->askForCalendar(); // no second question at a time
        running.model->askForContacts();
        const UserDefaults &defaults = running.home.platform.userDefaults;
        QCOMPARE(accessAnswer(defaults, PersonalData::calendar), before); // until there is another
        running.prompt.gate->finish();
        QTRY_VERIFY(running.model->canAskForCalendar());
        QCOMPARE(running.prompt.asked.size(), 1);
        QCOMPARE(running.state->calendarEnabled(), now.value_or(false));
        QCOMPARE(accessAnswer(defaults, PersonalData::calendar), now ? now : before);
    }

    void looksAfterTheQuestionsOfTheStart()
    {
        Running running;
        running.prompt.gate = std::make_shared<QPromise<void>>();
        running.prompt.gate->start();
        running.state.emplace(running.home.platform, AppServices(running.home.platform));
        running.indexer.emplace(running.home.platform);
        running.model.emplace(running.home.platform, *running.state, *running.indexer);
        running.model->lookForSources();
        QTRY_COMPARE(running.prompt.asked.size(), 1);
        QVERIFY(!running.model->canAskForCalendar());
        running.prompt.gate->finish();
        QTRY_VERIFY(running.model->canAskForCalendar());
    }

    void mayGoWhileItAsks()
    {
        Running running;
        QVERIFY(running.start());
        running.prompt.gate = std::make_shared<QPromise<void>>();
        running.prompt.gate->start();
        running.prompt.asked.clear();
        running.model->askForCalendar();
        QTRY_COMPARE(running.prompt.asked.size(), 1);
        running.model.reset();
        running.state.reset();
        running.prompt.gate->finish();
        QTest::qWait(0);
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstSettingsModel)
#include "tst_SettingsModel.moc"
