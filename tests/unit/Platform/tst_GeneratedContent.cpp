// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Generable.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace dugwise::test {

enum class Size {
    small,
    large,
};

struct Parcel
{
    static constexpr QLatin1StringView kName{"Parcel"};
    static constexpr QLatin1StringView kDescription{"Something sent"};

    QString label;
    Size size = Size::small;
    QStringList words;
    QList<qint64> numbers;

    static constexpr auto properties()
    {
        return std::tuple(
            GeneratedProperty<Parcel, QString>{"label"_L1, "What it says"_L1, &Parcel::label},
            GeneratedProperty<Parcel, Size>{"size"_L1, "How large"_L1, &Parcel::size},
            GeneratedProperty<Parcel, QStringList>{"words"_L1, "Words"_L1, &Parcel::words, 2},
            GeneratedProperty<Parcel, QList<qint64>>{"numbers"_L1, "N"_L1, &Parcel::numbers});
    }

    bool operator==(const Parcel &) const = default;
};

} // namespace dugwise::test

template <>
struct dugwise::GeneratedChoice<dugwise::test::Size>
{
    static constexpr QLatin1StringView kName{"Size"};
    static constexpr std::array kValues{"small"_L1, "large"_L1};
};

namespace dugwise::test {

class TstGeneratedContent : public QObject
{
    Q_OBJECT

private:
    /// JSON, written here with single quotes.
    static QByteArray json(QByteArray text) { return text.replace('\'', '"'); }

    static Outcome<Parcel> read(const QByteArray &text)
    {
        const auto content = readGeneratedContent(text, generationSchema<Parcel>());
        return content ? decoded<Parcel>(*content) : Outcome<Parcel>(Failure{content.error()});
    }

private Q_SLOTS:
    void theSchemaNamesAllInOrder()
    {
        const QByteArray expected = json(
            "{'type':'object','description':'Something sent','properties':{"
            "'label':{'description':'What it says','type':'string'},"
            "'size':{'description':'How large','type':'string','enum':['small','large']},"
            "'words':{'description':'Words','type':'array','items':{'type':'string'},'maxItems':2},"
            "'numbers':{'description':'N','type':'array','items':{'type':'integer'}}},"
            "'required':['label','size','words','numbers'],'additionalProperties':false}");
        QCOMPARE(jsonSchema(generationSchema<Parcel>()), expected);
    }

    void valuesAreReadFromWhateverSurroundsThem_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("alone") << QByteArray() << QByteArray();
        QTest::newRow("code fence") << QByteArray("```json\n") << QByteArray("\n```\n");
        QTest::newRow("reasoning")
            << QByteArray("<think>{\"label\": {x} \"</think>\n") << QByteArray();
        QTest::newRow("reasoning that drafts")
            << QByteArray(R"(<think>{"label":"no","size":"small","words":[],"numbers":[]}</think>)")
            << QByteArray();
        QTest::newRow("speaks of reasoning") << QByteArray() << QByteArray(" </think> and no more");
        QTest::newRow("another object") << QByteArray("{\"label\":\"x\"} ") << QByteArray(" {}");
        QTest::newRow("stray bytes") << QByteArray("\xFF{\xFE") << QByteArray("\xFF");
    }
    void valuesAreReadFromWhateverSurroundsThem()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        const Parcel parcel{u"caf\u00E9 {\"}"_s, Size::large, {u"a"_s, u"b"_s}, {3, -1}};
        const QByteArray json =
            "{ \"numbers\": [3, -1], \"label\": \"caf\xC3\xA9 {\\\"}\", "
            "\"more\": null, \"size\": \"large\", \"words\": [\"a\", \"b\", \"c\"]}";
        const Outcome<Parcel> read = TstGeneratedContent::read(before + json + after);
        QVERIFY2(read, read ? "" : qPrintable(read.error()));
        QCOMPARE(*read, parcel);
        QCOMPARE(*decoded<Parcel>(generatedContent(parcel)), parcel);
    }

    void whatIsNoValueFails_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("words") << QByteArray("I cannot do that.");
        QTest::newRow("a list") << QByteArray("[1, 2]");
        QTest::newRow("cut off") << json("{'label':'x','size':'small','words':['a");
        const QByteArray rest = json("'words':[],'numbers':[]}");
        QTest::newRow("missing") << json("{'label':'x',") + rest;
        QTest::newRow("wrong type") << json("{'label':1,'size':'small',") + rest;
        QTest::newRow("null") << json("{'label':null,'size':'small',") + rest;
        QTest::newRow("within another") << json("{'x':{'label':'x','size':'small',") + rest + '}';
        QTest::newRow("wrong element")
            << json("{'label':'','size':'small','words':['a',1],'numbers':[]}");
        for (const QByteArray number :
             {"NaN", "1.5", "1e40", "99999999999999999999", "'1'", "null", "[1]"}) {
            QTest::addRow("number %s", number.constData())
                << json("{'label':'','size':'small','words':[],'numbers':[" + number + "]}");
        }
        QTest::newRow("not UTF-8") << "{\"label\":\"\xE9\",\"size\":\"small\"," + rest;
        QTest::newRow("nested deep") << QByteArray("{\"label\":") + QByteArray(1'000'000, '[');
        QTest::newRow("many braces") << QByteArray(1'000'000, '{');
    }
    void whatIsNoValueFails()
    {
        QFETCH(QByteArray, text);
        QVERIFY(!read(text));
    }

    void aChoiceTakesItsOwnTextsOnly()
    {
        const QByteArray rest = R"(,"label":"","words":[],"numbers":[]})";
        QCOMPARE(read(R"({"size":"Large")" + rest).error(),
                 u"Unexpected value \"Large\" for Size"_s);
        QCOMPARE(read(R"({"size":"")" + rest).error(), u"Unexpected value \"\" for Size"_s);
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstGeneratedContent)
#include "tst_GeneratedContent.moc"
