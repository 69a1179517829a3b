// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AccessRequest.h"
#include "support/Fakes.h"
#include "support/SampleHome.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

using Answer = std::optional<bool>;

class TstAccessRequest : public QObject
{
    Q_OBJECT

private:
    static constexpr PersonalData kData = PersonalData::contacts;

    static QStringList oneSource() { return {u"a source"_s}; }
    static QStringList noSource() { return {}; }

private Q_SLOTS:
    void grantsWhatThePersonAllows_data()
    {
        QTest::addColumn<bool>("isThere");
        QTest::addColumn<Answer>("before");
        QTest::addColumn<Answer>("given");
        QTest::addColumn<bool>("isAsked");
        QTest::addColumn<bool>("isGranted");
        QTest::addColumn<Answer>("after");
        const auto row = [](const char *name,
                            bool isThere,
                            Answer before,
                            Answer given,
                            bool isAsked,
                            bool isGranted,
                            Answer after) {
            QTest::newRow(name) << isThere << before << given << isAsked << isGranted << after;
        };
        row("yes", true, {}, true, true, true, true);
        row("no", true, {}, false, true, false, false);
        row("no answer decides nothing", true, {}, {}, true, false, {});
        row("yes, before", true, true, false, false, true, true);
        row("no, before", true, false, true, false, false, false);
        row("nothing to read", false, {}, true, false, false, {});
        row("nothing to read any more", false, true, true, false, false, true);
    }
    void grantsWhatThePersonAllows()
    {
        QFETCH(bool, isThere);
        QFETCH(Answer, before);
        QFETCH(Answer, given);
        SampleHome home;
        UserDefaults &defaults = home.platform.userDefaults;
        auto &prompt = install<FakeAccessPrompt>(home.platform.accessPrompt);
        prompt.answers = {{PersonalData::calendar, !given.value_or(true)}};
        if (given)
            prompt.answers[kData] = *given;
        if (before)
            setAccessAnswer(defaults, kData, *before);
        AccessRequest request(home.platform, kData);
        QVERIFY(!request.isGranted());
        QCoro::waitFor(request.ask(Asking::once, isThere ? oneSource : noSource));
        QTEST(!prompt.asked.isEmpty(), "isAsked");
        QVERIFY(!prompt.asked.contains(PersonalData::calendar));
        QTEST(request.isGranted(), "isGranted");
        QTEST(accessAnswer(defaults, kData), "after");
        QVERIFY(!accessAnswer(defaults, PersonalData::calendar));
        // In another run, when it is written.
        QFETCH(Answer, after);
        const QString file = home.path(u".config/Dugwise/Dugwise.ini"_s);
        QTRY_VERIFY(accessAnswer(UserDefaults(file), kData) == after);
    }

    void nobodyToAskIsNoForNow()
    {
        SampleHome home;
        AccessRequest request(home.platform, kData);
        QCoro::waitFor(request.ask(Asking::once, oneSource));
        QCoro::waitFor(request.ask(Asking::once, nullptr));
        QVERIFY(!request.isGranted());
        QVERIFY(!accessAnswer(home.platform.userDefaults, kData));
        home.platform.userDefaults.setStringList(u"ContactsAccess"_s, {u"granted"_s, u"x"_s});
        QVERIFY(!accessAnswer(home.platform.userDefaults, kData));
    }

    void mayGoWhileThePersonThinks()
    {
        SampleHome home;
        auto &prompt = install<FakeAccessPrompt>(home.platform.accessPrompt);
        prompt.answers = {{kData, true}};
        prompt.gate = std::make_shared<QPromise<void>>();
        const auto gate = prompt.gate;
        gate->start();
        {
            AccessRequest request(home.platform, kData);
            const QCoro::Task<void> asking = request.ask(Asking::once, oneSource);
            QTRY_COMPARE(prompt.asked, QList{kData});
            QVERIFY(!request.isGranted());
        }
        gate->finish();
        QTest::qWait(0);
        QVERIFY(!accessAnswer(home.platform.userDefaults, kData));
    }
};

QTEST_GUILESS_MAIN(TstAccessRequest)
#include "tst_AccessRequest.moc"
