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

    void keepsStringLists_data()
    {
        QTest::addColumn<QStringList>("value");
        const auto row = [](const char *name, const QStringList &value) {
            QTest::newRow(name) << value;
        };
        row("none", {});
        row("one", {u"/home/me/Documents"_s});
        row("two", {u"/b"_s, u"/a"_s});
        row("one with a comma", {u"/a, b"_s});
        row("signs", {u"a,b;c\"d\\e"_s, u"k=v"_s, u"[x]"_s, u"#%20\\x41"_s});
        row("like types", {u"@Invalid()"_s, u"@ByteArray(x)"_s, u"@"_s});
        row("one like a type", {u"@Variant(x)"_s});
        row("white space", {u" a "_s, u"\tb\n"_s, u"\r\n"_s});
        row("Unicode", {u"/Bücher"_s, u"/שלום"_s, u"/😀"_s, u"/e\u0301"_s});
        row("with an empty one", {QString(), u"a"_s});
    }
    void keepsStringLists()
    {
        QFETCH(QStringList, value);
        UserDefaults(path()).setStringList(kKey, value);
        QCOMPARE(readAgain().stringList(kKey).value_or(QStringList()), value);
    }

    void keepsByteLists_data()
    {
        QTest::addColumn<QByteArrayList>("value");
        QTest::newRow("none") << QByteArrayList();
        QTest::newRow("one") << QByteArrayList{"{\"path\":\"/a\"}"};
        QTest::newRow("all bytes") << QByteArrayList{allBytes()};
        QTest::newRow("several") << QByteArrayList{allBytes(), "b", allBytes()};
        QTest::newRow("with an empty one") << QByteArrayList{"a", "", "b"};
        QTest::newRow("like types") << QByteArrayList{"@Variant(x)", "@ByteArray(y)", "1, 2"};
    }
    void keepsByteLists()
    {
        QFETCH(QByteArrayList, value);
        UserDefaults(path()).setByteArrayList(kKey, value);
        QCOMPARE(readAgain().byteArrayList(kKey).value_or(QByteArrayList()), value);
    }

    void keepsOtherKeys()
    {
        UserDefaults(path()).setStringList(u"Other"_s, {u"a"_s, u"b"_s});
        UserDefaults(path()).setByteArrayList(kKey, {"x", "y"});
        UserDefaults(path()).setByteArrayList(kKey, {"z", "z"});
        QCOMPARE(readAgain().stringList(u"Other"_s), (QStringList{u"a"_s, u"b"_s}));
        QCOMPARE(readAgain().byteArrayList(kKey), (QByteArrayList{"z", "z"}));
    }

    void countsOtherTypesAsAbsent_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<bool>("isStrings");
        const auto row = [](const char *name, const QByteArray &stored, bool isStrings = false) {
            QTest::newRow(name) << stored << isStrings;
        };
        row("missing", "Other=1");
        row("text", "Key=text", true);
        row("texts", "Key=a, b", true);
        row("bytes", "Key=@ByteArray(x)");
        row("mixed", "Key=@ByteArray(x), y");
        row("invalid", "Key=@Invalid()");
        row("cut variant", "Key=@Variant(\\0\\0\\0\\t\\0)");
        row("size", "Key=@Size(1 2)");
        row("a group", "[Key]\nx=1");
    }
    void countsOtherTypesAsAbsent()
    {
        QFETCH(QByteArray, stored);
        writeFile(path(), stored + '\n');
        const UserDefaults defaults(path());
        QCOMPARE(defaults.byteArrayList(kKey).value_or(QByteArrayList()), QByteArrayList());
        QTEST(defaults.stringList(kKey).has_value(), "isStrings");
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
        }
        QCOMPARE(readFile(path() + ".damaged"_L1), content);
        QCOMPARE(readAgain().stringList(u"New"_s), (QStringList{u"a"_s, u"b"_s}));
        QVERIFY(!readAgain().stringList(kKey));
    }

    void isReadableByItsOwnerOnly()
    {
        const QString file = m_folder->filePath(u"above/config/Dugwise.ini"_s);
        UserDefaults defaults(file);
        QVERIFY(!QFile::exists(file));
        defaults.setStringList(kKey, {u"a"_s});
        constexpr auto kOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup
                                 | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
        QCOMPARE(QFile::permissions(file) & kOthers, QFile::Permissions());
        QVERIFY(!(QFile::permissions(file) & QFile::ExeOwner));
        QCOMPARE(QFile::permissions(FilePath::folder(file)) & kOthers, QFile::Permissions());
    }

private:
    [[nodiscard]] QString path() const { return m_folder->filePath(u"Dugwise.ini"_s); }
    /// What the file says: objects of one process share what they know of one path, so it is read
    /// under another.
    [[nodiscard]] UserDefaults readAgain()
    {
        const QString copy = m_folder->filePath(u"copy%1.ini"_s.arg(++m_copies));
        QFile::copy(path(), copy);
        return UserDefaults(copy);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    int m_copies = 0;
};

QTEST_GUILESS_MAIN(TstUserDefaults)
#include "tst_UserDefaults.moc"
