// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine/StatusText.h"
#include "Models/AppState.h"
#include "Services/FileIndexer.h"
#include "Services/NetworkMonitor.h"
#include "support/Fakes.h"
#include "support/SampleFiles.h"
#include "support/SampleHome.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

class TstStatusText : public QObject
{
    Q_OBJECT

private:
    /// What is said of calendar and contacts.
    static QStringList personalLines(SampleHome &home)
    {
        const AppState state(home.platform, AppServices(home.platform));
        const FileIndexer indexer(home.platform);
        const NetworkMonitor network(nullptr);
        QStringList lines;
        const QString text = statusText(home.platform, state, indexer, network);
        for (const QString &line : text.split(u'\n')) {
            if (line.startsWith("  calendar "_L1) || line.startsWith("  contacts "_L1))
                lines.append(line.simplified());
        }
        return lines;
    }

private Q_SLOTS:
    void countsTheFilesOfEachFolder()
    {
        SampleHome home;
        writeFile(home.path(u"Documents/a.txt"_s), "a");
        writeFile(home.path(u"Documents/deep/er/b.txt"_s), "b");
        writeFile(home.path(u"Documents2/c.txt"_s), "c");
        const AppState state(home.platform, AppServices(home.platform));
        FileIndexer indexer(home.platform);
        QTRY_VERIFY(!indexer.isBusy());
        indexer.addFolderURL(QUrl::fromLocalFile(home.path(u"Documents/deep"_s)));
        QTRY_VERIFY(!indexer.isBusy());
        const NetworkMonitor network(nullptr);
        const QString text = statusText(home.platform, state, indexer, network);
        QVERIFY(text.contains(home.path(u"Documents"_s) + u"  2 files\n"_s));
        QVERIFY(text.contains(home.path(u"Documents/deep"_s) + u"  1 file\n"_s));
    }

    void tellsWhyPersonalDataIsOff()
    {
        SampleHome home;
        QStringList lines = personalLines(home);
        QCOMPARE(lines.size(), 2);
        QVERIFY(lines[0].startsWith(u"calendar off: "_s));
        QVERIFY(lines[1].startsWith(u"contacts off: "_s));

        auto &events = install<FakeEventStore>(home.platform.eventStore);
        auto &contacts = install<FakeContactStore>(home.platform.contactStore);
        events.there.clear();
        QVERIFY(personalLines(home)[0].startsWith(u"calendar off: none found; "_s));
        events.there = {u"1 calendar\033[31m"_s, u"/home/me/.calendars"_s};
        setAccessAnswer(home.platform.userDefaults, PersonalData::contacts, false);
        lines = personalLines(home);
        QCOMPARE(lines[0],
                 u"calendar off: not asked yet; `dugwise access grant calendar` turns it on"_s);
        QCOMPARE(lines[1], u"contacts off: denied; `dugwise access grant contacts` turns it on"_s);

        setAccessAnswer(home.platform.userDefaults, PersonalData::calendar, true);
        setAccessAnswer(home.platform.userDefaults, PersonalData::contacts, true);
        lines = personalLines(home);
        QCOMPARE(lines[0], u"calendar on: 1 calendar\uFFFD[31m, /home/me/.calendars"_s);
        QCOMPARE(lines[1], u"contacts on: an address book"_s);
        QVERIFY(events.spans.isEmpty() && contacts.names.isEmpty()); // only looked for
    }
};

QTEST_GUILESS_MAIN(TstStatusText)
#include "tst_StatusText.moc"
