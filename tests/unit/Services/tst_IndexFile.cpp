// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/IndexFile.h"
#include "support/OrdinaryUser.h"
#include "support/SampleFiles.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <limits>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

IndexedFileFields sampleFields()
{
    return *indexedFile({.path = u"/home/me/Notes.TXT"_s, .modified = {7.5e8}});
}

IndexedFileFields fullFields()
{
    return *indexedFile({.path = u"/home/me/é/Plan 😀 \"x\"\\.md"_s,
                         .modified = {1e8 / 3},
                         .text = "ÄPFEL\nand\tPEARS \u2028 \x01\x7f 😀",
                         .lastUsed = Instant{-1.25},
                         .downloaded = Instant{0},
                         .source = u"https://example.com/?a=1&b=\"ü\""_s});
}

QByteArray json(const QJsonObject &object)
{
    return QJsonDocument(QJsonArray{object}).toJson(QJsonDocument::Compact);
}

/// One record with every key, to be damaged.
QJsonObject sampleObject()
{
    return {{u"id"_s, u"E621E1F8-C36C-495A-93FC-0C247A3E6E5F"_s},
            {u"name"_s, u"a.txt"_s},
            {u"path"_s, u"/h/a.txt"_s},
            {u"fileExtension"_s, u"txt"_s},
            {u"size"_s, 5},
            {u"createdDate"_s, 0},
            {u"modifiedDate"_s, 86400.5},
            {u"folderPath"_s, u"/h"_s},
            {u"extractedText"_s, u"Text"_s},
            {u"lastUsedDate"_s, -3},
            {u"downloadDate"_s, 1e9},
            {u"downloadSource"_s, u"s"_s}};
}
const QStringList kOptionalKeys{
    u"extractedText"_s, u"lastUsedDate"_s, u"downloadDate"_s, u"downloadSource"_s};

QJsonObject withValue(const QString &key, const QJsonValue &value)
{
    QJsonObject object = sampleObject();
    object.insert(key, value);
    return object;
}

} // namespace

class TstIndexFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void keepsRecords_data()
    {
        QTest::addColumn<IndexedFileFields>("fields");
        const auto add = [](const char *name, auto change) {
            IndexedFileFields fields = sampleFields();
            change(fields);
            QTest::newRow(name) << fields;
        };
        QTest::newRow("plain") << sampleFields();
        QTest::newRow("full") << fullFields();
        add("NUL in the text", [](auto &f) { f.extractedText = makeTextContent({"A\0b\0", 4}); });
        add("empty text", [](auto &f) { f.extractedText = makeTextContent(""); });
        add("empty source", [](auto &f) { f.downloadSource = u""_s; });
        add("line feed in the name", [](auto &f) { f.name = u"a\nb\r\t\u007f\u2029"_s; });
        add("no extension", [](auto &f) { f.fileExtension = u""_s; });
        add("largest size", [](auto &f) { f.size = std::numeric_limits<qint64>::max(); });
        add("size beyond doubles", [](auto &f) { f.size = (qint64{1} << 53) + 1; });
        add("size of 32 bits", [](auto &f) { f.size = 4'294'967'295; });
        add("reference date", [](auto &f) { f.createdDate = f.modifiedDate = {0}; });
        add("half a second", [](auto &f) { f.modifiedDate = {86400.5}; });
        add("negative date", [](auto &f) { f.createdDate = {-978307200.000001}; });
        add("smallest step", [](auto &f) { f.modifiedDate = {std::nextafter(7.5e8, 8e8)}; });
        add("tiny date", [](auto &f) { f.lastUsedDate = Instant{5e-324}; });
        add("huge date", [](auto &f) { f.downloadDate = Instant{-1.7976931348623157e308}; });
    }
    void keepsRecords()
    {
        QFETCH(IndexedFileFields, fields);
        const QList<IndexedFile> files{IndexedFile(fields), IndexedFile(fullFields())};
        QVERIFY(IndexFile::save(path(), files));
        const auto loaded = IndexFile::load(path());
        QVERIFY(loaded);
        QCOMPARE(*loaded, files);
        const auto &text = loaded->first()->extractedText;
        QCOMPARE(text ? text->lowered() : QByteArray(),
                 fields.extractedText ? fields.extractedText->lowered() : QByteArray());
    }

    void keepsEveryDouble()
    {
        QRandomGenerator random(1);
        QList<IndexedFile> files;
        for (int i = 0; i < 3000; ++i) {
            const double seconds = random.generateDouble() * 1e9;
            files.append(indexedFile({.path = u"/a"_s,
                                      .modified = {seconds},
                                      .lastUsed = Instant{-seconds * 1e-7},
                                      .downloaded = Instant{seconds * seconds}}));
        }
        QVERIFY(IndexFile::save(path(), files));
        QCOMPARE(IndexFile::load(path()), files);
    }

    void writesOneCompactArray()
    {
        const QList<IndexedFile> files{IndexedFile(sampleFields()), IndexedFile(fullFields())};
        QVERIFY(IndexFile::save(path(), files));
        const QJsonArray array = QJsonDocument::fromJson(readFile(path())).array();
        QCOMPARE(array.size(), 2);
        QStringList required = sampleObject().keys();
        for (const QString &key : kOptionalKeys)
            required.removeOne(key);
        QCOMPARE(array[0].toObject().keys(), required);
        QCOMPARE(array[1].toObject().keys(), sampleObject().keys());
        QCOMPARE(array[0][u"id"_s].toString(), files[0]->id.toString(QUuid::WithoutBraces));
        QCOMPARE(array[0][u"modifiedDate"_s].toDouble(), 7.5e8);
        QVERIFY(!readFile(path()).contains('\n'));
        QVERIFY(!readFile(path()).contains("\": "));
        QVERIFY(IndexFile::save(path(), {}));
        QCOMPARE(readFile(path()), "[]");
        QCOMPARE(IndexFile::load(path()), QList<IndexedFile>());
    }

    void readsWhatOthersMayWrite()
    {
        QJsonObject object = sampleObject();
        object.insert(u"a"_s, QJsonObject{{u"name"_s, QJsonArray{1, u"x"_s, QJsonObject{}}}});
        object.insert(u"z"_s, QJsonArray{QJsonValue(), true, QJsonObject{{u"id"_s, 1}}, 1e300});
        object.insert(u"extractedText"_s, QJsonValue());
        object.insert(u"downloadDate"_s, QJsonValue());
        writeFile(path(), " \r\n" + QJsonDocument(QJsonArray{object, object}).toJson() + "\t\n");
        const auto files = IndexFile::load(path());
        QVERIFY(files);
        QCOMPARE(files->size(), 2);
        const IndexedFile &file = files->last();
        QCOMPARE(file->id, QUuid(u"e621e1f8-c36c-495a-93fc-0c247a3e6e5f"_s));
        QCOMPARE(file->name, u"a.txt"_s);
        QCOMPARE(file->size, 5);
        QCOMPARE(file->createdDate.seconds, 0.0);
        QCOMPARE(file->modifiedDate.seconds, 86400.5);
        QVERIFY(!file->extractedText && !file->downloadDate);
        QCOMPARE(file->lastUsedDate->seconds, -3.0);

        QByteArray escaped = json(withValue(u"extractedText"_s, u"TEXT"_s));
        escaped.replace("TEXT", "\\ud83d\\uDE00\\u0000\\u00DF")
            .replace("\"name\"", "\"\\u006eame\"");
        writeFile(path(), escaped);
        QCOMPARE(IndexFile::load(path())->first()->extractedText->text(),
                 QByteArray("😀\0ß", sizeof "😀\0ß" - 1));
    }

    void isAbsentWhenDamaged_data()
    {
        QTest::addColumn<QByteArray>("content");
        const QByteArray good = json(sampleObject());
        const QByteArray texts(
            "| |null|5|\"x\"|{}|[1]|[[]]|[{}]|[|[null]|[\"\"]|[{}|[}|[][]|[],|[]x|"
            "\xff|[]\xff|[tru]|\xef\xbb");
        for (const QByteArray &text : texts.split('|'))
            QTest::addRow("text %s", text.toHex().constData()) << text;
        const auto row = [](const char *name, const QByteArray &content) {
            QTest::newRow(name) << content;
        };
        row("NULs", QByteArray(good.size(), '\0'));
        row("NULs behind", good + QByteArray(8, '\0'));
        row("garbage behind a NUL", good + QByteArray("\0{}", 3));
        row("twice", good + good);
        row("an object", good.sliced(1).chopped(1));
        row("comma at the end", good.chopped(1) + ",]");
        row("comma in the object", good.chopped(2) + ",}]");
        row("UTF-16", QByteArray("[\0]\0", 4));
        row("second record", good.chopped(1) + ",{\"id\":\"x\"}]");
        const auto with = [&](const char *before, const QByteArray &after) {
            return QByteArray(good).replace(before, after);
        };
        row("invalid UTF-8", with("Text", "caf\xe9"));
        row("invalid UTF-8 in a key", with("{", "{\"\xe9\":1,"));
        row("cut sequence", with("Text", "\xe2\x82"));
        row("line feed", with("Text", "a\nb"));
        row("NUL", with("Text", QByteArray(1, '\0')));
        row("unknown escape", with("Text", "\\x"));
        row("cut escape", with("Text", "\\u12"));
        row("lone high surrogate", with("Text", "\\ud83d"));
        row("high surrogate twice", with("Text", "\\ud83d\\ud83d"));
        row("lone low surrogate", with("Text", "\\ude00"));
        row("lone low surrogate in a name", with("a.txt\"", "\\ude00\""));
        row("number too large", with("86400.5", "1e999"));
        row("not a number", with("86400.5", "NaN"));
        row("size too large", with(":5}", ":9223372036854775808}"));
        row("broken size", with(":5}", ":5.5}"));
        row("no id", with("E621E1F8-C36C-495A-93FC-0C247A3E6E5F", ""));
        row("short id", with("E621E1F8-C36C-495A-93FC-", "E621E1F8C36C495A93FC"));

        for (const QString &key : sampleObject().keys()) {
            QJsonObject without = sampleObject();
            without.remove(key);
            QJsonArray wrong{true, QJsonArray(), QJsonObject(), QJsonArray{u"x"_s}};
            const bool isText = sampleObject().value(key).isString();
            wrong.append(isText ? QJsonValue(5) : QJsonValue(u"5"_s));
            if (!kOptionalKeys.contains(key)) {
                QTest::addRow("without %s", qPrintable(key)) << json(without);
                wrong.append(QJsonValue());
            }
            for (const QJsonValue &value : std::as_const(wrong))
                QTest::addRow("%s of type %d", qPrintable(key), value.type())
                    << json(withValue(key, value));
        }
    }
    void isAbsentWhenDamaged()
    {
        QFETCH(QByteArray, content);
        writeFile(path(), content);
        QVERIFY(!IndexFile::load(path()));
    }

    void isAbsentWhenMissing()
    {
        QVERIFY(!IndexFile::load(path()));
        QVERIFY(!IndexFile::load(m_folder->path()));
        QVERIFY(!IndexFile::load(path() + u"/x"_s));
    }

    void isAbsentWhenCut()
    {
        QVERIFY(IndexFile::save(path(), {IndexedFile(fullFields()), IndexedFile(sampleFields())}));
        const QByteArray whole = readFile(path());
        for (qsizetype length = 0; length < whole.size(); ++length) {
            writeFile(path(), whole.first(length));
            QVERIFY2(!IndexFile::load(path()), whole.first(length));
        }
        writeFile(path(), whole);
        QVERIFY(IndexFile::load(path()));
    }

    void survivesChangedBytes()
    {
        const QByteArray whole = json(sampleObject());
        for (qsizetype at = 0; at < whole.size(); ++at) {
            for (const char byte : {'\0', '"', '{', ']', '9', '\x80'}) {
                QByteArray changed = whole;
                changed[at] = byte;
                writeFile(path(), changed);
                const auto files = IndexFile::load(path());
                QVERIFY(!files || files->size() == 1);
            }
        }
    }

    void keepsALargeIndex()
    {
        QList<IndexedFile> files;
        for (int i = 0; i < 8000; ++i) {
            files.append(indexedFile({.path = u"/home/%1/ü.txt"_s.arg(i),
                                      .text = QByteArray("é\"😀\n").repeated(i % 251)}));
        }
        QVERIFY(IndexFile::save(path(), files));
        QVERIFY(QFileInfo(path()).size() > 9 * 1024 * 1024);
        QCOMPARE(IndexFile::load(path()), files);
    }

    void savesForItsOwnerOnly()
    {
        writeFile(path(), "old");
        QCOMPARE(::chmod(path().toLocal8Bit(), 0666), 0);
        QVERIFY(IndexFile::save(path(), {}));
        struct stat facts
        {};
        QCOMPARE(::stat(path().toLocal8Bit(), &facts), 0);
        QCOMPARE(facts.st_mode & 0777U, 0600U);
    }

    void removesLeftoversOfKilledSaves()
    {
        for (const QString &end : {u".AbCdEf"_s, u".zzzzzz"_s, u".lock"_s, u".longer one"_s})
            writeFile(path() + end, "x");
        writeFile(m_folder->filePath(u"other.json.AbCdEf"_s), "x");
        QVERIFY(IndexFile::save(path(), {}));
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files),
                 (QStringList{u"file_index.json"_s,
                              u"file_index.json.lock"_s,
                              u"file_index.json.longer one"_s,
                              u"other.json.AbCdEf"_s}));
    }

    void tellsWhyItCannotSave()
    {
        QVERIFY(!failure(m_folder->filePath(u"none/file_index.json"_s)).isEmpty());
        QVERIFY(QDir().mkpath(path() + u"/folder"_s));
        QVERIFY(!failure(path()).isEmpty());
        IndexedFileFields endless = sampleFields();
        endless.modifiedDate = {std::numeric_limits<double>::infinity()};
        const auto outcome =
            IndexFile::save(m_folder->filePath(u"new.json"_s), {IndexedFile(endless)});
        QVERIFY(!outcome && !outcome.error().isEmpty());
        QVERIFY(!QFile::exists(m_folder->filePath(u"new.json"_s)));
    }

    void keepsTheOldFileInAFolderThatCannotBeWritten()
    {
        writeFile(path(), "old");
        QCOMPARE(::chmod(m_folder->path().toLocal8Bit(), 0555), 0);
        {
            const OrdinaryUser user;
            QVERIFY(!failure(path()).isEmpty());
        }
        QCOMPARE(::chmod(m_folder->path().toLocal8Bit(), 0700), 0);
        QCOMPARE(readFile(path()), "old");
    }

    void keepsTheOldFileWhenTheDiskIsFull()
    {
        writeFile(path(), "old");
        const QByteArray text(9 * 1024 * 1024, 'x');
        const QList<IndexedFile> files{indexedFile({.path = u"/a"_s, .text = text})};
        rlimit before{};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &before), 0);
        const rlimit small{.rlim_cur = 1024 * 1024 + 512, .rlim_max = before.rlim_max};
        std::signal(SIGXFSZ, SIG_IGN);
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
        const auto outcome = IndexFile::save(path(), files);
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &before), 0);
        QVERIFY(!outcome);
        QVERIFY(!outcome.error().isEmpty());
        QCOMPARE(readFile(path()), "old");
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 1);
    }

    void isAbsentWhenNestedTooDeep()
    {
        QByteArray content = json(withValue(u"unknown"_s, u"HERE"_s));
        content.replace("\"HERE\"", QByteArray(1'000'000, '['));
        writeFile(path(), content);
        QVERIFY(!IndexFile::load(path()));
    }

private:
    [[nodiscard]] QString path() const { return m_folder->filePath(u"file_index.json"_s); }
    static QString failure(const QString &path)
    {
        const auto outcome = IndexFile::save(path, {IndexedFile(sampleFields())});
        return outcome ? QString() : outcome.error();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TstIndexFile)
#include "tst_IndexFile.moc"
