// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/UserDefaults.h"
#include "support/SampleFiles.h"

#include <QTemporaryDir>
#include <QTest>

#include <numeric>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

constexpr auto kKey = "Key"_L1;

QByteArray allBytes()
{
    QByteArray bytes(256, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    return bytes;
}

} // namespace

class TstUserDefaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void keepsStringLists()
    {
        const QString texts = u"/home/me|/b^/a|/a, b|a;c\"d\\e^k=v^[x]^#%20\\x41|@Invalid()^@|"
                              "@ByteArray(x)|@Variant(x)| a ^\tb\n^\r\n|/Bücher^/שלום^/😀|^a"_s;
        for (const QString &text : texts.split(u'|')) {
            const QStringList value = text.split(u'^');
            UserDefaults(path()).setStringList(kKey, value);
            QCOMPARE(readAgain().stringList(kKey), value);
        }
        UserDefaults(path()).setStringList(kKey, {});
        QVERIFY(readAgain().stringList(kKey).value_or(QStringList()).isEmpty());
    }

    void keepsByteLists()
    {
        UserDefaults(path()).setStringList(u"Other"_s, {u"a"_s, u"b"_s});
        const QByteArray all = allBytes();
        const QList<QByteArrayList> values{
            {all}, {all, "b", all}, {"{\"path\":\"/a\"}"}, {"a", "", "b"}, {"@Variant(x)", "1, 2"}};
        for (const QByteArrayList &value : values) {
            UserDefaults(path()).setByteArrayList(kKey, value);
            QCOMPARE(readAgain().byteArrayList(kKey), value);
        }
        UserDefaults(path()).setByteArrayList(kKey, {});
        QVERIFY(readAgain().byteArrayList(kKey).value_or(QByteArrayList()).isEmpty());
        QCOMPARE(readAgain().stringList(u"Other"_s), (QStringList{u"a"_s, u"b"_s}));
    }

    void keepsBooleans()
    {
        for (const bool value : {true, false, true}) {
            UserDefaults(path()).setBoolean(kKey, value);
            QVERIFY(readFile(path()).contains(value ? "Key=true" : "Key=false"));
            QCOMPARE(readAgain().boolean(kKey), value);
        }
        for (const char *stored : {"Other=true", "Key=1", "Key=", "Key=TRUE", "Key=true, false"})
            QVERIFY2(!UserDefaults(fileOf(stored)).boolean(kKey), stored);
    }

    void countsOtherTypesAsAbsent()
    {
        for (const char *stored : {"Other=1",
                                   "Key=@ByteArray(x)",
                                   "Key=@ByteArray(x), y",
                                   "Key=@Invalid()",
                                   "Key=@Variant(\\0\\0\\0\\t\\0)",
                                   "Key=@Size(1 2)",
                                   "[Key]\nx=1"}) {
            UserDefaults defaults(fileOf(stored));
            QVERIFY2(!defaults.stringList(kKey), stored);
            QVERIFY2(defaults.byteArrayList(kKey).value_or(QByteArrayList()).isEmpty(), stored);
        }
        for (const char *stored : {"Key=text", "Key=a, b"})
            QVERIFY2(!UserDefaults(fileOf(stored)).byteArrayList(kKey), stored);
    }

    void keepsADamagedFileAside_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("broken group") << QByteArray("Key=a, b\n[broken");
        QTest::newRow("line without a value") << QByteArray("Key=a, b\nbroken\n");
        QTest::newRow("no settings at all") << QByteArray("something else\n");
        QTest::newRow("binary") << allBytes();
    }
    void keepsADamagedFileAside()
    {
        QFETCH(QByteArray, content);
        writeFile(path() + ".damaged"_L1, "from an earlier time");
        writeFile(path(), content);
        {
            UserDefaults defaults(path());
            QVERIFY(!defaults.stringList(kKey));
            QVERIFY(!defaults.byteArrayList(kKey));
            QCOMPARE(readFile(path()), content);
            defaults.setStringList(u"New"_s, {u"a"_s, u"b"_s});
            defaults.setStringList(u"Newer"_s, {u"c"_s, u"d"_s});
        }
        QCOMPARE(readFile(path() + ".damaged"_L1), content);
        QCOMPARE(readAgain().stringList(u"New"_s), (QStringList{u"a"_s, u"b"_s}));
        QCOMPARE(readAgain().stringList(u"Newer"_s), (QStringList{u"c"_s, u"d"_s}));
        QVERIFY(!readAgain().stringList(kKey));
    }

    void isReadableByItsOwnerOnly()
    {
        const QString file = m_folder->filePath(u"above/config/Dugwise.ini"_s);
        {
            UserDefaults defaults(file);
            QVERIFY(!QFile::exists(file));
            defaults.setStringList(kKey, {u"a"_s});
        }
        const auto permissions = QFile::permissions(file);
        QCOMPARE(permissions.toInt() & 0x177, 0);
        QCOMPARE(QFile::permissions(FilePath::folder(file)).toInt() & 0x077, 0);
    }

    void knowsItsOwnChangesAtOnceAndKeepsThoseOfOthers()
    {
        {
            UserDefaults defaults(path());
            defaults.setStringList(kKey, {u"a"_s, u"b"_s});
            QCOMPARE(defaults.stringList(kKey), (QStringList{u"a"_s, u"b"_s}));
            UserDefaults(path()).setStringList(u"Other"_s, {u"c"_s, u"d"_s});
            for (int i = 0; i < 50; ++i)
                defaults.setStringList(kKey, {u"a"_s, QString::number(i)});
        }
        QCOMPARE(readAgain().stringList(kKey), (QStringList{u"a"_s, u"49"_s}));
        QCOMPARE(readAgain().stringList(u"Other"_s), (QStringList{u"c"_s, u"d"_s}));
    }

    void changesEntriesOfAListThatOthersChange()
    {
        UserDefaults(path()).setStringList(kKey, {u"a"_s, u"b"_s});
        {
            UserDefaults defaults(path());
            UserDefaults other(path());
            for (int i = 0; i < 20; ++i) {
                defaults.changeStringList(kKey, {u"a"_s}, {u"b"_s, u"one %1"_s.arg(i)});
                other.changeStringList(kKey, {}, {u"another %1"_s.arg(i)});
                other.changeByteArrayList(u"Bytes"_s, {}, {QByteArray::number(i)});
                QVERIFY(defaults.stored().result() && other.stored().result());
            }
            QCOMPARE(defaults.stringList(kKey)->first(2), (QStringList{u"b"_s, u"one 0"_s}));
            defaults.changeByteArrayList(u"Bytes"_s, {"3", "x"}, {"0"});
            defaults.changeByteArrayList(u"Bytes"_s, {"5"}, {"x"});
        }
        const QStringList kept = readAgain().stringList(kKey).value_or(QStringList());
        QCOMPARE(kept.size(), 41);
        QVERIFY(!kept.contains(u"a"_s));
        const auto bytes = readAgain().byteArrayList(u"Bytes"_s).value_or(QByteArrayList());
        QCOMPARE(bytes.last(), "x");
        QVERIFY(bytes.contains("19") && !bytes.contains("5"));
    }

private:
    [[nodiscard]] QString path() const { return m_folder->filePath(u"Dugwise.ini"_s); }
    [[nodiscard]] QString another()
    {
        return m_folder->filePath(QString::number(++m_files) + u".ini"_s);
    }
    /// What the file says: objects of one process share what they know of one path, so it is read
    /// under another.
    [[nodiscard]] UserDefaults readAgain()
    {
        const QString copy = another();
        QFile::copy(path(), copy);
        return UserDefaults(copy);
    }
    [[nodiscard]] QString fileOf(const QByteArray &content)
    {
        const QString file = another();
        writeFile(file, content + '\n');
        return file;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    int m_files = 0;
};

QTEST_GUILESS_MAIN(TstUserDefaults)
#include "tst_UserDefaults.moc"
