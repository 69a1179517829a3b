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

#include <cmath>
#include <csignal>
#include <limits>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

const QStringList kOptionalKeys{
    u"extractedText"_s, u"lastUsedDate"_s, u"downloadDate"_s, u"downloadSource"_s};

/// A record without the optional fields, and one with all.
IndexedFile plain()
{
    return indexedFile({.path = u"/home/me/Notes.TXT"_s, .modified = {7.5e8}});
}
IndexedFile full()
{
    return indexedFile({.path = u"/home/me/é/Plan 😀 \"x\"\\\n.md"_s,
                        .modified = {1e8 / 3},
                        .text = "ÄPFEL\nand\tPEARS \u2028 \x01\x7f 😀",
                        .lastUsed = Instant{-1.25},
                        .downloaded = Instant{0},
                        .source = u"https://example.com/?a=1&b=\"ü\""_s});
}
IndexedFile changed(const std::function<void(IndexedFileFields &)> &change)
{
    IndexedFileFields fields = *plain();
    change(fields);
    return IndexedFile(fields);
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
QByteArray json(QJsonObject object, const QString &key = {}, const QJsonValue &value = {})
{
    if (!key.isEmpty())
        object.insert(key, value);
    return QJsonDocument(QJsonArray{object}).toJson(QJsonDocument::Compact);
}

} // namespace

class TstIndexFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void keepsRecords()
    {
        using F = IndexedFileFields;
        constexpr qint64 kMost = std::numeric_limits<qint64>::max();
        QList<IndexedFile> files{
            full(),
            plain(),
            changed([](F &f) {
                f.extractedText = makeTextContent({"A\0b\0", 4});
            }),
            changed([](F &f) { f.extractedText = makeTextContent(""); }),
            changed([](F &f) { f.downloadSource = f.fileExtension = u""_s; }),
            changed([](F &f) { f.name = u"a\nb\r\t\u007f\u2029"_s; }),
            changed([](F &f) { f.size = kMost; }),
            changed([](F &f) { f.size = (qint64{1} << 53) + 1; }),
            changed([](F &f) { f.size = 4'294'967'295; }),
            changed([](F &f) { f.createdDate = f.modifiedDate = {0}; }),
            changed([](F &f) { f.createdDate = {-978307200.000001}; }),
            changed([](F &f) { f.modifiedDate = {std::nextafter(7.5e8, 8e8)}; }),
            changed([](F &f) { f.lastUsedDate = Instant{5e-324}; }),
            changed([](F &f) { f.downloadDate = Instant{-1.7976931348623157e308}; }),
        };
        QRandomGenerator random(1);
        for (int i = 0; i < 8000; ++i) { // some 9 MB
            const double seconds = random.generateDouble() * 1e9;
            files.append(indexedFile({.path = u"/home/%1/ü.txt"_s.arg(i),
                                      .modified = {seconds},
                                      .text = QByteArray("É\"😀\n").repeated(i % 251),
                                      .lastUsed = Instant{-seconds * 1e-7}}));
        }
        QVERIFY(IndexFile::save(path(), files));
        const auto loaded = IndexFile::load(path());
        QVERIFY(loaded);
        QCOMPARE(*loaded, files);
        for (qsizetype i = 0; i < files.size(); ++i) {
            const auto &text = (*loaded)[i]->extractedText;
            QVERIFY(!text || text->lowered() == files[i]->extractedText->lowered());
        }
    }

    void writesOneCompactArray()
    {
        QVERIFY(IndexFile::save(path(), {plain(), full()}));
        const QByteArray content = readFile(path());
        QVERIFY(!content.contains('\n') && !content.contains("\": "));
        const QJsonArray array = QJsonDocument::fromJson(content).array();
        QStringList keys = sampleObject().keys();
        QCOMPARE(array[1].toObject().keys(), keys);
        for (const QString &key : kOptionalKeys)
            keys.removeOne(key);
        QCOMPARE(array[0].toObject().keys(), keys);
        QCOMPARE(array[0][u"id"_s].toString().size(), 36);
        QCOMPARE(array[0][u"modifiedDate"_s].toDouble(), 7.5e8);
        QVERIFY(IndexFile::save(path(), {}));
        QCOMPARE(readFile(path()), "[]");
        QCOMPARE(IndexFile::load(path()), QList<IndexedFile>());
    }

    void readsWhatOthersMayWrite()
    {
        QJsonObject object = sampleObject();
        object.insert(u"a"_s, QJsonObject{{u"name"_s, QJsonArray{1, u"x"_s, QJsonObject{}}}});
        object.insert(u"z"_s, QJsonArray{QJsonValue(), true, QJsonObject{{u"id"_s, 1}}, 1e300});
        object.insert(u"downloadDate"_s, QJsonValue());
        QByteArray content = " \r\n" + QJsonDocument(QJsonArray{object, object}).toJson() + "\t\n";
        content.replace("\"Text\"", "\"\\ud83d\\uDE00\\u0000\\u00DF\"")
            .replace("name\"", "n\\u0061me\"");
        writeFile(path(), content);
        const auto files = IndexFile::load(path());
        QVERIFY(files);
        QCOMPARE(files->size(), 2);
        const IndexedFile &file = files->last();
        QCOMPARE(file->id, QUuid(u"e621e1f8-c36c-495a-93fc-0c247a3e6e5f"_s));
        QCOMPARE(file->name, u"a.txt"_s);
        QCOMPARE(file->size, 5);
        QCOMPARE(file->createdDate.seconds, 0.0);
        QCOMPARE(file->modifiedDate.seconds, 86400.5);
        QCOMPARE(file->extractedText->text(), QByteArray("😀\0ß", sizeof "😀\0ß" - 1));
        QCOMPARE(file->lastUsedDate->seconds, -3.0);
        QVERIFY(!file->downloadDate);
    }

    void isAbsentWhenDamaged_data()
    {
        QTest::addColumn<QByteArray>("content");
        const QByteArray good = json(sampleObject());
        const QByteArray contents(
            "| |null|5|\"x\"|{}|[1]|[[]]|[{}]|[|[null]|[\"\"]|[{}|[}|[][]|[],|"
            "[]x|\xff|[]\xff|[tru]|\xef\xbb");
        for (const QByteArray &content : contents.split('|'))
            QTest::addRow("content %s", content.toHex().constData()) << content;
        QTest::newRow("a million deep") << "[{\"x\":" + QByteArray(1'000'000, '[');
        const QByteArray texts("caf\xe9|\xe2\x82|a\nb|\\x|\\u12|\\ud83d|\\ud83d\\ud83d|\\ude00");
        for (const QByteArray &text : texts.split('|')) {
            QByteArray content = good;
            content.replace(":\"Text\"", ":\"" + text + '"');
            QTest::addRow("text %s", text.toHex().constData()) << content;
        }
        const auto row = [&](const char *name, const char *before, const QByteArray &after) {
            QTest::newRow(name) << QByteArray(good).replace(before, after);
        };
        row("NUL in a text", "Text\"", QByteArray("\0\"", 2));
        row("lone surrogate in a name", "a.txt\"", "\\ude00\"");
        row("invalid UTF-8 in a key", "{", "{\"\xe9\":1,");
        row("number too large", "86400.5", "1e999");
        row("not a number", "86400.5", "NaN");
        row("size too large", ":5}", ":9223372036854775808}");
        row("broken size", ":5}", ":5.5}");
        row("no id", "E621E1F8-C36C-495A-93FC-0C247A3E6E5F", "");
        row("short id", "E621E1F8-C36C-495A-93FC-", "E621E1F8C36C495A93FC");
        row("comma in the object", "}", ",}");
        row("comma at the end", "}]", "},]");
        row("second record without keys", "}]", "},{}]");
        row("NULs behind", "}]", "}]" + QByteArray(8, '\0'));
        row("more behind a NUL", "}]", "}]" + QByteArray("\0{}", 3));
        row("twice", "}]", "}]" + good);
        row("no array", "[", "");
        QTest::newRow("NULs") << QByteArray(good.size(), '\0');

        for (const QString &key : sampleObject().keys()) {
            const bool isText = sampleObject().value(key).isString();
            QJsonArray wrong{true, QJsonArray(), QJsonObject(), QJsonArray{u"x"_s}};
            wrong.append(isText ? QJsonValue(5) : QJsonValue(u"5"_s));
            if (!kOptionalKeys.contains(key)) {
                QJsonObject without = sampleObject();
                without.remove(key);
                QTest::addRow("without %s", qPrintable(key)) << json(without);
                wrong.append(QJsonValue());
            }
            for (const QJsonValue &value : std::as_const(wrong))
                QTest::addRow("%s of type %d", qPrintable(key), value.type())
                    << json(sampleObject(), key, value);
        }
    }
    void isAbsentWhenDamaged()
    {
        QFETCH(QByteArray, content);
        writeFile(path(), content);
        QVERIFY(!IndexFile::load(path()));
    }

    void isAbsentWhenMissingOrCut()
    {
        for (const QString &name : {path(), m_folder->path(), path() + u"/x"_s})
            QVERIFY(!IndexFile::load(name));
        QVERIFY(IndexFile::save(path(), {full(), plain()}));
        const QByteArray whole = readFile(path());
        for (qsizetype length = 0; length < whole.size(); ++length) {
            writeFile(path(), whole.first(length));
            QVERIFY2(!IndexFile::load(path()), whole.first(length));
        }
    }

    void survivesChangedBytes()
    {
        const QByteArray whole = json(sampleObject());
        for (qsizetype at = 0; at < whole.size(); ++at) {
            for (const char byte : {'\0', '"', '{', ']', '9', '\x80'}) {
                QByteArray content = whole;
                content[at] = byte;
                writeFile(path(), content);
                const auto files = IndexFile::load(path());
                QVERIFY(!files || files->size() == 1);
            }
        }
    }

    void savesForItsOwnerAndTidiesUp()
    {
        writeFile(path(), "old");
        QCOMPARE(::chmod(path().toLocal8Bit(), 0666), 0);
        for (const QString &end : {u".new"_s, u".lock"_s, u".backup"_s})
            writeFile(path() + end, "x");
        QVERIFY(IndexFile::save(path(), {}));
        QCOMPARE(QFile::permissions(path()).toInt() & 0x177, 0);
        // What a killed save has left is gone, and nothing else.
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).join(u' '),
                 u"file_index.json file_index.json.backup file_index.json.lock"_s);
    }

    void tellsWhyItCannotSave()
    {
        QVERIFY(fails(m_folder->filePath(u"none/file_index.json"_s), plain()));
        QVERIFY(QDir().mkpath(path() + u"/folder"_s));
        QVERIFY(fails(path(), plain()));
        const QString other = m_folder->filePath(u"other.json"_s);
        constexpr double kInfinity = std::numeric_limits<double>::infinity();
        QVERIFY(fails(other, changed([](auto &f) { f.modifiedDate = {kInfinity}; })));
        QVERIFY(!QFile::exists(other));
    }

    void keepsTheOldFile()
    {
        writeFile(path(), "old");
        QCOMPARE(::chmod(m_folder->path().toLocal8Bit(), 0555), 0);
        {
            const OrdinaryUser user;
            QVERIFY(fails(path(), plain()));
        }
        QCOMPARE(::chmod(m_folder->path().toLocal8Bit(), 0700), 0);
        QCOMPARE(readFile(path()), "old");

        // As on a full disk, writing fails half way.
        rlimit before{};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &before), 0);
        const rlimit small{.rlim_cur = 1'000'000, .rlim_max = before.rlim_max};
        std::signal(SIGXFSZ, SIG_IGN);
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
        const QByteArray text(9'000'000, 'x');
        const bool isFailed = fails(path(), indexedFile({.path = u"/a"_s, .text = text}));
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &before), 0);
        QVERIFY(isFailed);
        QCOMPARE(readFile(path()), "old");
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 1);
    }

    void isAbsentWhenNestedTooDeep()
    {
        writeFile(path(),
                  json(sampleObject()).replace("{", "{\"x\":" + QByteArray(1'000'000, '[')));
        QVERIFY(!IndexFile::load(path()));
    }

private:
    [[nodiscard]] QString path() const { return m_folder->filePath(u"file_index.json"_s); }
    static bool fails(const QString &path, const IndexedFile &file)
    {
        const auto outcome = IndexFile::save(path, {file});
        return !outcome && !outcome.error().isEmpty();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TstIndexFile)
#include "tst_IndexFile.moc"
