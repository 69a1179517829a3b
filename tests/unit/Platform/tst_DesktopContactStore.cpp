// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DesktopContactStore.h"
#include "support/Fingerprint.h"
#include "support/SampleFiles.h"
#include "support/SampleHome.h"
#include "support/SampleThunderbird.h"

#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

namespace dugwise::test {

namespace {

constexpr std::chrono::seconds kPatience{60}; // for a busy machine

/// A card of content lines, each ended by a bar.
QByteArray card(const QByteArray &lines)
{
    return "BEGIN:VCARD\r\nVERSION:3.0\r\n" + QByteArray(lines).replace("|", "\r\n")
           + "END:VCARD\r\n";
}

} // namespace

class TstDesktopContactStore : public QObject
{
    Q_OBJECT

private:
    std::optional<SampleHome> m_home;
    std::optional<DesktopContactStore> m_store;

    void write(const QString &name, const QByteArray &content) const
    {
        writeFile(m_home->path(u".local/share/contacts/"_s + name), content);
    }
    /// "GIVEN/FAMILY ADDRESS,… NUMBER,…" of each.
    [[nodiscard]] QStringList find(const QString &name) const
    {
        QStringList found;
        for (const StoredContact &contact : m_store->contactsNamed(name))
            found.append(contact.givenName + u'/' + contact.familyName + u' '
                         + contact.emails.join(u',') + u' ' + contact.phoneNumbers.join(u','));
        return found;
    }

private Q_SLOTS:
    void init()
    {
        m_home.emplace();
        m_store.emplace(m_home->platform.folders, QStringLiteral(DUGWISE_AGENDA), kPatience);
    }

    void readsCards_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("found");
        QTest::newRow("3.0") << card("N:Lee;Sarah;Q.;Dr.;|FN:Dr. Sarah Lee|"
                                     "EMAIL;TYPE=INTERNET,HOME:sarah@example.org|"
                                     "item1.EMAIL:work@example.org|TEL;TYPE=CELL:+1 555 0100|"
                                     "tel;type=home:(030) 12 34|")
                             << u"Sarah/Lee sarah@example.org,work@example.org "
                                "+1 555 0100,(030) 12 34"_s;
        QTest::newRow("4.0") << card("N;SORT-AS=\"Lee,Sarah:x\":Lee;Sarah,Ann;;;|"
                                     "EMAIL:mailto:sarah@example.org|"
                                     "TEL;VALUE=uri;TYPE=\"voice,home\":tel:+1-555-0100|")
                             << u"Sarah Ann/Lee sarah@example.org +1-555-0100"_s;
        QTest::newRow("2.1") << QByteArray(
            "BEGIN:VCARD\r\nVERSION:2.1\r\n"
            "N;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:L=C3=A9=\r\n=\r\n;Sarah\r\n"
            "TEL;HOME;VOICE:555\r\nEMAIL;INTERNET:sarah@example.org\r\n"
            "NOTE;QUOTED-PRINTABLE:one=0D=0A=\r\nEMAIL:two=\r\n\r\n"
            "END:VCARD\r\n") << u"Sarah/Lé sarah@example.org 555"_s;
        QTest::newRow("Latin-1") << card("N:M\xfcller;Sarah|") << u"Sarah/Müller  "_s;
        QTest::newRow("escapes") << card("N:Lee\\, Jr.\\;;Sarah\\\\|EMAIL: a@b.org |EMAIL:|")
                                 << u"Sarah\\/Lee, Jr.; a@b.org "_s;
        QTest::newRow("folded") << card("N:L|  ee;Sa|\trah|") << u"Sarah/L ee  "_s;
        QTest::newRow("a family name alone") << card("N:Sarah|") << u"/Sarah  "_s;
        QTest::newRow("a full name alone") << card("FN:Sarah Lee|N:;;;;|") << u"Sarah Lee/  "_s;
        QTest::newRow("a nickname alone") << card("NICKNAME:Sarah,Sally|") << u"Sarah Sally/  "_s;
        QTest::newRow("a card within")
            << card("N:Lee;Sarah|AGENT:|BEGIN:VCARD|N:Kim;Sarah|EMAIL:no@b.org|END:VCARD|"
                    "EMAIL:a@b.org|")
            << u"Sarah/Lee a@b.org "_s;
        QTest::newRow("after a card without an end")
            << "BEGIN:VCARD\r\nN:Kim;Sarah\r\n" + card("N:Lee;Sarah|") << u"Sarah/Lee  "_s;
        QTest::newRow("after a card within without an end")
            << "BEGIN:VCARD\r\nAGENT:\r\n" + card("N:Kim;Sarah|") + card("N:Lee;Sarah|")
            << u"Sarah/Lee  "_s;
        QTest::newRow("photo") << card("N:Lee;Sarah|PHOTO;ENCODING=b;TYPE=JPEG:"
                                       + QByteArray("QUFB\r\n ").repeated(1'500'000)
                                       + "|EMAIL:a@b.org|")
                               << u"Sarah/Lee a@b.org "_s;
        QTest::newRow("folded ten thousand times")
            << card("N:Lee;S" + QByteArray("\r\n ").repeated(10'000) + "arah|") << u"Sarah/Lee  "_s;
        QTest::newRow("control characters") << card("N:L\x1f\x1e"
                                                    "ee;Sarah|EMAIL:a\x1d@b|")
                                            << u"Sarah/L  ee a @b "_s;
    }
    void readsCards()
    {
        QFETCH(const QByteArray, content);
        QFETCH(const QString, found);
        write(u"a.vcf"_s, content);
        QCOMPARE(find(u"sarah"_s), QStringList{found});
    }

    void anEndlessCardCostsNoOther()
    {
        const QByteArray endless = ("TEL:" + QByteArray(60'000, '5') + '|').repeated(100);
        write(u"a.vcf"_s,
              card("N:Lee;Sarah|").repeated(100) + card("N:Kim;Sarah|" + endless)
                  + card("N:Lee;Sarah|").repeated(100));
        QCOMPARE(find(u"sarah lee"_s).size(), 200);
        QCOMPARE(find(u"sarah kim"_s), QStringList());
    }

    void leavesOutWhatIsNoEntry_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("noise") << QByteArray("\0\xff:sarah\n\n\r::;;;\"", 17);
        QTest::newRow("cut off") << card("N:Lee;Sarah|").chopped(7);
        QTest::newRow("a group") << card("KIND:group|N:;Sarah|");
        QTest::newRow("Apple's group") << card("N:;Sarah|X-ADDRESSBOOKSERVER-KIND:group|");
        QTest::newRow("Evolution's list") << card("FN:Sarah|X-EVOLUTION-LIST:TRUE|");
        QTest::newRow("no name") << card("EMAIL:sarah@example.org|ORG:Sarah|");
    }
    void leavesOutWhatIsNoEntry()
    {
        QFETCH(const QByteArray, content);
        write(u"a.vcf"_s, content);
        write(u"b.vcf"_s, card("N:Kim;Sarah|"));
        QCOMPARE(find(u"sarah"_s), QStringList{u"Sarah/Kim  "_s});
    }

    void findsByTheBeginningsOfWords_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("isFound");
        for (const auto &name : {u"zoe"_s,
                                 u"ZOË"_s,
                                 u"zo"_s,
                                 u"anais"_s,
                                 u"o'brien"_s,
                                 u"brien"_s,
                                 u"Nunez, Zoë"_s,
                                 u"nuñ"_s,
                                 u"bunny"_s,
                                 u"professor zoe"_s,
                                 u"  zoe  "_s})
            QTest::newRow(qPrintable(name)) << name << true;
        for (const auto &name : {u"oe"_s,
                                 u"zoes"_s,
                                 u"zoe kim"_s,
                                 u"zoe@example.org"_s,
                                 u"%"_s,
                                 u"z*"_s + u"x"_s,
                                 u""_s,
                                 u" .,' "_s})
            QTest::newRow(qPrintable(u"not "_s + name)) << name << false;
    }
    void findsByTheBeginningsOfWords()
    {
        QFETCH(const QString, name);
        QFETCH(const bool, isFound);
        write(u"a.vcf"_s,
              card("N:O'Brien-Nu\xc3\xb1"
                   "ez;Zoe\xcc\x88 Ana\xc3\xafs|NICKNAME:Bunny|"
                   "FN:Professor Zoe O'Brien|EMAIL:zoe@work.net|"));
        QCOMPARE(!find(name).isEmpty(), isFound);
    }

    void keepsTheOrderOfTheStores()
    {
        writeFile(m_home->path(u".config/khard/khard.conf"_s),
                  "[addressbooks]\n[[family]]\npath = ~/family/\n[general]\n");
        write(u"b.vcf"_s, card("N:Lee;Sarah|") + card("N:Kim;Sarah|"));
        write(u"a/a.vcf"_s, card("N:Inner;Sarah|"));
        writeFile(m_home->path(u".contacts/x.vcf"_s), card("N:Two;Sarah|"));
        writeFile(m_home->path(u"family/y.vcf"_s), card("N:Three;Sarah|"));
        QCOMPARE(find(u"sarah"_s),
                 (QStringList{u"Sarah/Lee  "_s,
                              u"Sarah/Kim  "_s,
                              u"Sarah/Inner  "_s,
                              u"Sarah/Two  "_s,
                              u"Sarah/Three  "_s}));
        QCOMPARE(m_store->sources(),
                 (QStringList{u"folder ~/.local/share/contacts"_s,
                              u"folder ~/.contacts"_s,
                              u"folder ~/family"_s}));
        QVERIFY(QFile::remove(m_home->path(u".contacts/x.vcf"_s)));
        QCOMPARE(find(u"sarah two"_s), QStringList());
    }

    void readsThunderbird()
    {
        const QString profile = m_home->path(u"snap/thunderbird/common/.thunderbird/abc.default"_s);
        QVERIFY(QDir().mkpath(profile));
        SampleThunderbirdBook history(profile, u"history"_s);
        history.add(u"h"_s, {{u"DisplayName"_s, u"Sarah Seen"_s}, {u"PrimaryEmail"_s, u"s@b"_s}});
        SampleThunderbirdBook second(profile, u"abook-1"_s);
        second.add(u"s"_s,
                   {{u"FirstName"_s, u"Sarah"_s},
                    {u"LastName"_s, u"Kim; B\nC"_s},
                    {u"SecondEmail"_s, u"two@b.org"_s},
                    {u"PrimaryEmail"_s, u"one@b.org"_s},
                    {u"CellularNumber"_s, u"+1 555"_s},
                    {u"PopularityIndex"_s, u"3"_s}});
        SampleThunderbirdBook first(profile, u"abook"_s);
        first.run("PRAGMA locking_mode = EXCLUSIVE; BEGIN IMMEDIATE");
        first.add(u"1"_s, {{u"DisplayName"_s, u"stale Sarah"_s}});
        first.add(u"2"_s, {{u"NickName"_s, u"Sarah"_s}, {u"LastName"_s, u"Nick"_s}});
        first.add(u"1"_s,
                  {{u"_vCard"_s,
                    u"BEGIN:VCARD\r\nN:Lee;Sarah;;;\r\nEMAIL:lee@b.org\r\nTEL;VALUE=TEXT:5\r\n"
                    "END:VCARD\r\n"_s}});
        first.run("COMMIT; INSERT INTO lists VALUES ('l', 'Sarah', '', ''); BEGIN IMMEDIATE");
        const QByteArray before = fingerprint(m_home->folder.path());
        QCOMPARE(find(u"sarah"_s),
                 (QStringList{u"Sarah/Lee lee@b.org 5"_s,
                              u"/Nick  "_s,
                              u"Sarah/Kim; B\nC two@b.org,one@b.org +1 555"_s,
                              u"Sarah Seen/ s@b "_s}));
        QVERIFY(QDir(m_home->path(u".cache"_s)).removeRecursively());
        QCOMPARE(fingerprint(m_home->folder.path()), before);
        QCOMPARE(m_store->sources(), QStringList{u"Thunderbird"_s});
        second.run("DELETE FROM properties");
        QCOMPARE(find(u"kim"_s), QStringList());
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstDesktopContactStore)
#include "tst_DesktopContactStore.moc"
