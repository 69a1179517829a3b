// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/EnglishTokens.h"

#include <QTest>

using namespace dugwise;
using namespace Qt::StringLiterals;

class TstEnglishTokens : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesTextApart_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("tokens");
        QTest::newRow("nothing") << QByteArray() << u""_s;
        QTest::newRow("no words") << QByteArray(" --_ \n!") << u""_s;
        QTest::newRow("file name")
            << QByteArray("Series-A_pitch v3.pptx") << u"series a pitch v 3 pptx"_s;
        QTest::newRow("grouped number")
            << QByteArray("10,000 or 1,234,567,89") << u"10000 or 1234567 89"_s;
        QTest::newRow("list of numbers") << QByteArray("1,2,333") << u"1 2333"_s;
        QTest::newRow("negations") << QByteArray("can't cannot won't isn't DON'T")
                                   << u"can not can not will not is not do not"_s;
        QTest::newRow("short forms")
            << QByteArray("he's we're I've they'll she'd I'm") << u"he we i they she i"_s;
        QTest::newRow("curly apostrophe") << QByteArray("Anna’s won’t") << u"anna will not"_s;
        QTest::newRow("other apostrophe") << QByteArray("o'clock 'tis") << u"o clock tis"_s;
        QTest::newRow("initials") << QByteArray("the U.S. and p.m. in a.b")
                                  << u"the us and pm in ab"_s;
        QTest::newRow("end of a sentence") << QByteArray("plan a.txt") << u"plan a txt"_s;
        QTest::newRow("accents") << QByteArray("Café Zürich ÅNGSTRÖM façade")
                                 << u"cafe zurich angstrom facade"_s;
        QTest::newRow("decomposed") << QByteArray("Cafe\u0301 Zu\u0308rich") << u"cafe zurich"_s;
        QTest::newRow("not decomposable")
            << QByteArray("Straße Ærø łódź œuvre") << u"strasse aero lodz oeuvre"_s;
        QTest::newRow("ligatures") << QByteArray("oﬃce ﬁle") << u"office file"_s;
        QTest::newRow("soft hyphen") << QByteArray("data\u00ADbase") << u"database"_s;
        QTest::newRow("other scripts") << QByteArray("Москва tour 東京2020 שלום") << u"tour 2020"_s;
        QTest::newRow("emoji") << QByteArray("🎂cake👩‍👩‍👧family")
                               << u"cake family"_s;
        QTest::newRow("invalid") << QByteArray("a\xFF"
                                               "b\xC3")
                                 << u"a b"_s;
        QTest::newRow("zero bytes") << QByteArray("a\0b", 3) << u"a b"_s;
        QTest::newRow("capitals stay together") << QByteArray("BeachTrip") << u"beachtrip"_s;
    }
    void takesTextApart()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const QString, tokens);
        QCOMPARE(joined(englishTokens(text.toStdString())), tokens);
    }

    void takesNamesApart_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QString>("tokens");
        QTest::newRow("capitals") << QByteArray("BeachTrip2024.jpg") << u"beach trip 2024 jpg"_s;
        QTest::newRow("acronym first") << QByteArray("HTMLFile") << u"html file"_s;
        QTest::newRow("acronym last") << QByteArray("annualCV") << u"annual cv"_s;
        QTest::newRow("plural") << QByteArray("PDFs and CVs") << u"pdfs and cvs"_s;
        QTest::newRow("all capitals") << QByteArray("INVOICE") << u"invoice"_s;
        QTest::newRow("one small letter") << QByteArray("iPhone eBook") << u"iphone ebook"_s;
        QTest::newRow("accents") << QByteArray("CaféMenüÜbersicht") << u"cafe menu ubersicht"_s;
        QTest::newRow("lower case") << QByteArray("beachtrip 3d") << u"beachtrip 3 d"_s;
    }
    void takesNamesApart()
    {
        QFETCH(const QByteArray, name);
        QFETCH(const QString, tokens);
        QCOMPARE(joined(englishNameTokens(name.toStdString())), tokens);
    }

private:
    static QString joined(const std::vector<std::string> &tokens)
    {
        QStringList list;
        for (const std::string &token : tokens)
            list.append(QString::fromStdString(token));
        return list.join(u' ');
    }
};

QTEST_GUILESS_MAIN(TstEnglishTokens)
#include "tst_EnglishTokens.moc"
