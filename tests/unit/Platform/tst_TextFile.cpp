// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/TextFile.h"
#include "support/SampleFiles.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

constexpr std::size_t kCharacters = 5000;
constexpr qsizetype kPiece = 256 * 1024;
constexpr qsizetype kMebibyte = 1024 * 1024;
constexpr qsizetype kHuge = 1024 * kMebibyte + 5;

/// Bytes that are no UTF-8 wherever they stand, even followed by more.
const QByteArrayList kInvalid =
    QByteArray("\xff|\x80|caf\xe9 |\xc0\xaf|\xed\xa0\x80|\xf4\x90\x80\x80|"
               "\xf8\x88\x80\x80\x80|\xe2\x82|\xf0\x9f\x98")
        .split('|');

} // namespace

class TstTextFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cutsAfterTheLastWantedCharacter_data()
    {
        QTest::addColumn<QByteArray>("kept");
        QTest::addColumn<QByteArray>("behind");
        const QByteArray almost(kCharacters - 1, 'x');
        const auto row = [](const char *name, const QByteArray &kept, const QByteArray &behind) {
            QTest::newRow(name) << kept << behind;
        };
        row("empty", "", "");
        row("one less", almost, "");
        row("exact", almost + "x", "");
        row("one more", almost + "x", "y");
        row("many more", almost + "x", QByteArray(7000, 'y'));
        row("bytes", QByteArray("é").repeated(kCharacters), QByteArray("é").repeated(7000));
        row("combining mark", almost + "e\u0301", "y");
        row("combining mark at the end", almost + "e\u0301", "");
        row("joined emoji", almost + "👨‍👩‍👧", "👨");
        row("flags", almost + "🇩🇪", "🇫🇷");
        row("CR LF", almost + "\r\n", "\r\n");
        row("LF CR", almost + "\n", "\rx");
        row("jamo", almost + "\u1112\u1161\u11ab", "\u1100");
        row("NULs", QByteArray(kCharacters, '\0'), QByteArray(3, '\0'));
    }
    void cutsAfterTheLastWantedCharacter()
    {
        QFETCH(QByteArray, kept);
        QFETCH(QByteArray, behind);
        const auto head = read(kept + behind);
        QVERIFY(head);
        QCOMPARE(head->text, kept);
        QCOMPARE(head->isWhole, behind.isEmpty());
    }

    void readsSequencesAcrossPieces()
    {
        for (const QByteArray sequence : {"é", "€", "😀"}) {
            for (qsizetype at = kPiece - 4; at <= kPiece; ++at) {
                const QByteArray before(at, 'x');
                QVERIFY(read(before + sequence));
                QVERIFY(read(before + sequence + "y"));
                for (qsizetype length = 1; length < sequence.size(); ++length) {
                    QVERIFY(!read(before + sequence.first(length)));
                    QVERIFY(!read(before + sequence.first(length) + "y"));
                }
            }
        }
        QVERIFY(read(QByteArray("€").repeated(3 * kPiece / 4)));
    }

    void isAbsentForInvalidBytesAnywhere()
    {
        for (const QByteArray &invalid : kInvalid) {
            for (const qsizetype at : {qsizetype{0}, qsizetype{6000}, 2 * kMebibyte}) {
                const QByteArray before(at, 'x');
                QVERIFY2(!read(before + invalid), invalid.toHex());
                QVERIFY2(!read(before + invalid + "y"), invalid.toHex());
            }
            QVERIFY2(!read(QByteArray(kPiece - 1, 'x') + invalid + "y"), invalid.toHex());
        }
    }

    void keepsLittleOfEndlessCharacters()
    {
        const auto head = read("a" + QByteArray("\u0301").repeated(2 * kMebibyte));
        QVERIFY(head);
        QVERIFY(!head->isWhole);
        QVERIFY(head->text.size() <= kMebibyte);
        QVERIFY(head->text.isValidUtf8());
    }

    void needsLittleMemoryForAHugeFile()
    {
        const QString path = m_folder.filePath(u"huge.txt"_s);
        writeFile(path, {});
        if (::truncate(QFile::encodeName(path).constData(), kHuge) != 0)
            QSKIP("no sparse files here");
        QVERIFY(read("x")); // with its buffers made
        const long before = peakMemory();
        const auto head = readTextHead(path, kCharacters);
        const long grown = peakMemory() - before;
        QVERIFY(QFile::remove(path));
        QVERIFY(head);
        QCOMPARE(head->text, QByteArray(kCharacters, '\0'));
        QVERIFY2(grown < 16 * 1024, qPrintable(QString::number(grown) + u" KiB"_s));
    }

    void doesNotWaitForWhatIsNoFile()
    {
        const QString pipe = m_folder.filePath(u"pipe.txt"_s);
        const QString file = m_folder.filePath(u"file.txt"_s);
        const QString link = m_folder.filePath(u"link.txt"_s);
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        writeFile(file, "x");
        QVERIFY(QFile::link(file, link));
        for (const QString &path :
             {pipe, link, m_folder.path(), m_folder.filePath(u"none"_s), u"/dev/zero"_s, QString()})
            QVERIFY2(!readTextHead(path, kCharacters), qPrintable(path));
        QVERIFY(readTextHead(file, kCharacters));
    }

    void stopsOnRequest()
    {
        const QString path = m_folder.filePath(u"file.txt"_s);
        writeFile(path, "x");
        std::stop_source stop;
        QVERIFY(readTextHead(path, kCharacters, stop.get_token()));
        stop.request_stop();
        QVERIFY(!readTextHead(path, kCharacters, stop.get_token()));
    }

private:
    [[nodiscard]] std::optional<TextHead> read(const QByteArray &content) const
    {
        const QString path = m_folder.filePath(u"text.txt"_s);
        writeFile(path, content);
        return readTextHead(path, kCharacters);
    }
    static long peakMemory() // KiB
    {
        rusage usage{};
        ::getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss;
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TstTextFile)
#include "tst_TextFile.moc"
