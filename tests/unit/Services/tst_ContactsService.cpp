// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/ContactsService.h"
#include "support/Fakes.h"
#include "support/SampleHome.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

class TstContactsService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void resolvesNames_data()
    {
        QTest::addColumn<QString>("givenName");
        QTest::addColumn<QString>("familyName");
        QTest::addColumn<QString>("fullName");
        QTest::newRow("both") << u"Sarah"_s << u"Lee"_s << u"Sarah Lee"_s;
        QTest::newRow("given name only") << u"Sarah"_s << u""_s << u"Sarah"_s;
        QTest::newRow("family name only") << u""_s << u"Lee"_s << u"Lee"_s;
        QTest::newRow("neither") << u""_s << u""_s << u""_s;
        QTest::newRow("blanks at the ends") << u" Sarah"_s << u"Lee "_s << u"Sarah Lee"_s;
    }
    void resolvesNames()
    {
        QFETCH(QString, givenName);
        QFETCH(QString, familyName);
        QFETCH(QString, fullName);
        SampleHome home;
        auto &store = install<FakeContactStore>(home.platform.contactStore);
        const StoredContact other{givenName, u"Zed"_s, {}, {}};
        store.contacts = {{givenName, familyName, {u"b@x"_s, u"a@y"_s}, {u"+1 (5) 5"_s}}, other};
        setAccessAnswer(home.platform.userDefaults, PersonalData::contacts, true);
        ContactsService contacts(home.platform);
        QVERIFY(contacts.findContacts(givenName).isEmpty());
        QVERIFY(store.names.isEmpty());
        QCoro::waitFor(contacts.requestAccess(Asking::once));
        const QList<ResolvedContact> found = contacts.findContacts(givenName);
        QCOMPARE(found.size(), 2);
        QCOMPARE(found[0].fullName, fullName);
        QCOMPARE(found[0].emails, QStringList({u"b@x"_s, u"a@y"_s}));
        QCOMPARE(found[0].phoneNumbers, QStringList({u"+1 (5) 5"_s}));
        QCOMPARE(found[1].fullName, (givenName + u" Zed"_s).trimmed());
        QVERIFY(found[1].emails.isEmpty());
        QVERIFY(contacts.findContacts(u"nobody"_s).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TstContactsService)
#include "tst_ContactsService.moc"
