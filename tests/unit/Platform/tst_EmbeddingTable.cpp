// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EmbeddingTable.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cstring>
#include <limits>

using namespace dugwise;
using namespace Qt::StringLiterals;
using namespace EmbeddingFormat;

class TstEmbeddingTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QFile file(kPath);
        QVERIFY(file.open(QIODevice::ReadOnly));
        m_bytes = file.readAll();
        QVERIFY(read(m_bytes));
    }

    void opensFiles()
    {
        const auto table = EmbeddingTable::open(kPath);
        QVERIFY(table);
        QCOMPARE(table->version(), read(m_bytes)->version());
        QVERIFY(m_bytes.size() <= 16'000'000);
        QTemporaryDir folder;
        QVERIFY(!EmbeddingTable::open(folder.filePath(u"none"_s)));
        QVERIFY(!EmbeddingTable::open(folder.path()));
    }

    void findsEveryWord()
    {
        const auto table = read(m_bytes);
        QCOMPARE_GT(table->wordCount(), 79'000U);
        for (std::uint32_t i = 0; i < table->wordCount(); ++i)
            QCOMPARE(table->find(table->word(i)), std::optional(i));
        for (const char *word : {"", "qqzzx", "Dog", "dog ", "dogdogdog", "42"})
            QVERIFY2(!table->find(word), word);
    }

    void knowsHowCommonWordsAre()
    {
        const auto table = read(m_bytes);
        QCOMPARE_GT(table->frequency(table->find("the")), table->frequency(table->find("house")));
        QCOMPARE_GT(table->frequency(table->find("house")), table->frequency(std::nullopt));
        QCOMPARE_GT(table->frequency(std::nullopt), 0.0F);
        const PartOfSpeechWeights walk = table->weights("walk");
        QVERIFY(walk[0] > 0 && walk[1] > walk[0] && walk[2] == 0 && walk[3] == 0);
    }

    void findsTheWordsOfForms_data()
    {
        QTest::addColumn<QByteArray>("form");
        QTest::addColumn<QString>("words"); // the likeliest first
        QTest::newRow("irregular verb") << QByteArray("left") << u"leave left"_s;
        QTest::newRow("function word") << QByteArray("was") << u"be"_s;
        QTest::newRow("irregular noun") << QByteArray("mice") << u"mouse"_s;
        QTest::newRow("rare reading") << QByteArray("leaves") << u"leave"_s;
        QTest::newRow("of two words") << QByteArray("axes") << u"axis ax"_s;
        QTest::newRow("no plural") << QByteArray("glass") << u"glass"_s;
        QTest::newRow("plural") << QByteArray("churches") << u"church"_s;
        QTest::newRow("noun and verb") << QByteArray("studies") << u"study"_s;
        QTest::newRow("doubled letter") << QByteArray("stopped") << u"stop"_s;
        QTest::newRow("comparative") << QByteArray("largest") << u"large"_s;
        QTest::newRow("plural of -ful") << QByteArray("boxesful") << u"boxful"_s;
        QTest::newRow("word of the glossary") << QByteArray("selfies") << u"selfie"_s;
        QTest::newRow("unknown") << QByteArray("qqzzxs") << u"qqzzxs"_s;
        QTest::newRow("number") << QByteArray("1984") << u"1984"_s;
    }
    void findsTheWordsOfForms()
    {
        QFETCH(const QByteArray, form);
        QFETCH(const QString, words);
        const auto table = read(m_bytes);
        QStringList found;
        float sum = 0;
        for (const Lemma &lemma : lemmas(form.toStdString(), *table)) {
            found.append(QString::fromStdString(lemma.word));
            sum += lemma.share;
        }
        QCOMPARE(found.join(u' '), words);
        QVERIFY(qAbs(sum - 1) < 1e-5F);
    }

    void refusesDamagedFiles()
    {
        for (const qsizetype size : {qsizetype{0},
                                     qsizetype{1},
                                     qsizetype{47},
                                     qsizetype{48},
                                     m_bytes.size() / 2,
                                     m_bytes.size() - 1})
            QVERIFY2(!read(m_bytes.left(size)), qPrintable(QString::number(size)));
        QVERIFY(!read(m_bytes + '\0'));
        QByteArray damaged = m_bytes;
        constexpr qsizetype kPlaces = 100;
        for (qsizetype i = 0; i < kPlaces; ++i) {
            // Every byte of the header, then all over the file.
            const qsizetype at = i < 48 ? i : m_bytes.size() / kPlaces * i + i;
            const char whole = damaged[at];
            damaged[at] = static_cast<char>(whole ^ 1 << i % 8);
            QVERIFY2(!read(damaged), qPrintable(QString::number(at)));
            damaged[at] = whole;
        }
        QVERIFY(read(damaged));
    }

    void refusesUnsoundFiles_data()
    {
        QTest::addColumn<std::size_t>("at");
        QTest::addColumn<std::uint32_t>("value");
        const std::size_t mean = sizeof(Header);
        const std::size_t words = mean + kVectorSize * sizeof(float);
        const std::size_t count = read(m_bytes)->wordCount();
        const std::size_t forms = words + (count * sizeof(WordRecord) + 7) / 8 * 8;
        const auto row = [](const char *name, std::size_t at, std::uint32_t value) {
            QTest::newRow(name) << at << value;
        };
        row("other version", offsetof(Header, version), kVersion + 1);
        row("more words", offsetof(Header, words), static_cast<std::uint32_t>(count + 1));
        row("far too many words", offsetof(Header, words), 0xFFFFFFFF);
        row("fewer forms", offsetof(Header, forms), 1);
        row("slots that are no power of two", offsetof(Header, wordSlots), (1U << 17) + 2);
        row("no slots", offsetof(Header, formSlots), 0);
        row("no tokens", offsetof(Header, tokens), 0);
        row("infinite mean",
            mean,
            std::bit_cast<std::uint32_t>(std::numeric_limits<float>::infinity()));
        row("spelling behind the text", words, packSpelling((1 << 24) - 1, 1));
        row("form behind the text", forms, packSpelling((1 << 24) - 1, 1));
        row("bases behind the last", forms + 4, 0xFFFFFFF1);
    }
    void refusesUnsoundFiles()
    {
        QFETCH(const std::size_t, at);
        QFETCH(const std::uint32_t, value);
        QVERIFY(!read(altered(at, value)));
    }

    void comesToAnEndInFullSlots()
    {
        // What a slot leads to, and that one is free, is checked as well.
        Header header{};
        std::memcpy(&header, m_bytes.constData(), sizeof header);
        const auto padded = [](std::size_t size) { return (size + 7) / 8 * 8; };
        const std::size_t slots =
            sizeof header + kVectorSize * sizeof(float) + padded(header.words * sizeof(WordRecord))
            + padded(header.forms * sizeof(FormRecord)) + padded(header.bases * std::size_t{4});
        QVERIFY(!read(altered(slots, header.words + 1)));
        QByteArray full = m_bytes;
        for (std::size_t i = 0; i < header.wordSlots; ++i) {
            const std::uint32_t first = slotOf(0, 0);
            std::memcpy(full.data() + slots + i * 4, &first, sizeof first);
        }
        sign(full);
        QVERIFY(!read(full));
    }

    void hasAnotherVersionWhenItDiffers()
    {
        const QByteArray other = altered(sizeof(Header), std::bit_cast<std::uint32_t>(0.25F));
        QVERIFY(read(other));
        QVERIFY(read(other)->version() != read(m_bytes)->version());
    }

private:
    static std::optional<EmbeddingTable> read(const QByteArray &bytes)
    {
        return EmbeddingTable::read({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    }
    static void sign(QByteArray &bytes)
    {
        const std::string_view all(bytes.constData(), static_cast<std::size_t>(bytes.size()));
        const std::uint64_t sum = checksum(all.substr(kChecksumEnd));
        std::memcpy(bytes.data() + offsetof(Header, checksum), &sum, sizeof sum);
    }
    /// The table with another number somewhere, and the checksum that goes with it.
    [[nodiscard]] QByteArray altered(std::size_t at, std::uint32_t value) const
    {
        QByteArray bytes = m_bytes;
        std::memcpy(bytes.data() + at, &value, sizeof value);
        sign(bytes);
        return bytes;
    }

    const QString kPath = QStringLiteral(DUGWISE_EMBEDDING_TABLE);
    QByteArray m_bytes;
};

QTEST_GUILESS_MAIN(TstEmbeddingTable)
#include "tst_EmbeddingTable.moc"
