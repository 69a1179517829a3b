// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EmbeddingTable.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <array>

using namespace dugwise;
using namespace Qt::StringLiterals;

namespace {

constexpr int kSynsets = 1'500;

/// Words of three syllables, as many as anybody needs.
QByteArray madeUpWord(int number)
{
    static constexpr std::array<const char *, 12> kSyllables{
        "ba", "do", "fi", "gu", "ka", "lo", "mi", "nu", "pa", "ro", "si", "tu"};
    QByteArray word;
    for (int rest = number % (12 * 12 * 12), i = 0; i < 3; ++i, rest /= 12)
        word += kSyllables.at(static_cast<std::size_t>(rest % 12));
    return word;
}

/// A dictionary of nouns, each explained by others, in the format of WordNet.
class SampleDictionary
{
public:
    explicit SampleDictionary(const QString &folder)
        : m_folder(folder)
    {
        QByteArray data("  1 a licence stands at the beginning\n");
        QByteArray index(data);
        for (int i = 0; i < kSynsets; ++i) {
            const QByteArray gloss = madeUpWord(i * 7 + 1) + " with a " + madeUpWord(i * 5 + 2)
                                     + "; \"the " + madeUpWord(i) + " of " + madeUpWord(i * 3)
                                     + "\"";
            data += offset(i) + " 03 n 01 " + madeUpWord(i) + " 0 001 @ " + offset(i / 2)
                    + " n 0000 | " + gloss + "\n";
            index += madeUpWord(i) + " n 1 1 @ 1 1 " + offset(i) + "  \n";
        }
        write(u"data.noun"_s, data);
        write(u"index.noun"_s, index);
        write(u"noun.exc"_s, "badobas " + madeUpWord(12) + "\n");
        write(u"cntlist.rev"_s, madeUpWord(3) + "%1:03:00:: 1 42\n");
        for (const char *part : {"verb", "adj", "adv"}) {
            for (const char *name : {"data.%1", "index.%1", "%1.exc"})
                write(QString::fromLatin1(name).arg(QLatin1StringView(part)), {});
        }
        write(u"glossary.txt"_s, "# ours\nselfie,groupie | 2 | " + madeUpWord(5) + "\n");
        write(u"topics.txt"_s, madeUpWord(8) + ": " + madeUpWord(9) + " selfie\n");
    }

    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(m_folder + u'/' + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }

private:
    static QByteArray offset(int synset)
    {
        return QByteArray::number(synset).rightJustified(8, '0');
    }

    QString m_folder;
};

} // namespace

class TstBuildEmbedding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder.emplace();
        m_sample.emplace(m_folder->path());
    }

    void givesTheSameBytesWithAnyNumberOfThreads()
    {
        QCOMPARE(build({u"--threads"_s, u"1"_s}), 0);
        const QByteArray bytes = output();
        QVERIFY(!bytes.isEmpty());
        for (const QString &threads : {u"2"_s, u"3"_s, u"7"_s}) {
            QCOMPARE(build({u"--threads"_s, threads}), 0);
            QVERIFY(output() == bytes);
        }
        const auto table = EmbeddingTable::open(m_folder->filePath(u"table"_s));
        QVERIFY(table);
        QVERIFY(table->find("selfie"));
        QCOMPARE(table->irregularBases("badobas").size(), std::size_t{1});
        const auto related = table->find(madeUpWord(4).toStdString());
        QVERIFY(related && table->meaning(*related));
    }

    void refusesWhatItCannotRead_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("synset cut short")
            << u"data.noun"_s << QByteArray("00000000 03 n 02 dog 0\n");
        QTest::newRow("relation to nothing")
            << u"data.noun"_s << QByteArray("00000000 03 n 01 dog 0 001 @ 00009999 n 0000 | pet\n");
        QTest::newRow("sense of nothing")
            << u"index.noun"_s << QByteArray("dog n 1 1 @ 1 1 00009999  \n");
        QTest::newRow("broken count") << u"cntlist.rev"_s << QByteArray("dog 1 42\n");
        QTest::newRow("broken glossary") << u"glossary.txt"_s << QByteArray("selfie: a picture\n");
        QTest::newRow("broken topics") << u"topics.txt"_s << QByteArray("travel\n");
    }
    void refusesWhatItCannotRead()
    {
        QFETCH(const QString, file);
        QFETCH(const QByteArray, content);
        m_sample->write(file, content);
        QCOMPARE(build({}), 1);
        QVERIFY(output().isEmpty());
    }

    void needsMoreWordsThanDimensions()
    {
        for (const char *file : {"data.noun", "index.noun", "cntlist.rev", "noun.exc"})
            m_sample->write(QString::fromLatin1(file), {});
        QCOMPARE(build({}), 1);
        QVERIFY(m_errors.contains("too few words"));
    }

    void leavesTheOldTableWhenItFails()
    {
        m_sample->write(u"table"_s, "old");
        QVERIFY(QFile::remove(m_folder->filePath(u"verb.exc"_s)));
        QCOMPARE(build({}), 1);
        QCOMPARE(output(), QByteArray("old"));
    }

    void tellsItsUsage_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("none") << QStringList();
        QTest::newRow("too few") << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("too many") << QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s};
        QTest::newRow("no threads") << QStringList{u"--threads"_s, u"0"_s, u"a"_s, u"b"_s, u"c"_s};
        QTest::newRow("not a number")
            << QStringList{u"--threads"_s, u"x"_s, u"a"_s, u"b"_s, u"c"_s};
        QTest::newRow("unknown option") << QStringList{u"--fast"_s, u"a"_s, u"b"_s};
    }
    void tellsItsUsage()
    {
        QFETCH(const QStringList, arguments);
        QCOMPARE(run(arguments), 2);
        QCOMPARE(m_errors.count('\n'), 1);
    }

private:
    int run(const QStringList &arguments)
    {
        QProcess process;
        process.start(QStringLiteral(DUGWISE_BUILD_EMBEDDING), arguments);
        constexpr int kLongest = 200'000;
        if (!process.waitForFinished(kLongest) || process.exitStatus() != QProcess::NormalExit)
            return -1;
        m_errors = process.readAllStandardError();
        return process.exitCode();
    }
    int build(const QStringList &options)
    {
        return run(
            options
            + QStringList{m_folder->path(), m_folder->path(), m_folder->filePath(u"table"_s)});
    }
    [[nodiscard]] QByteArray output() const
    {
        QFile file(m_folder->filePath(u"table"_s));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::optional<QTemporaryDir> m_folder;
    std::optional<SampleDictionary> m_sample;
    QByteArray m_errors;
};

QTEST_GUILESS_MAIN(TstBuildEmbedding)
#include "tst_BuildEmbedding.moc"
