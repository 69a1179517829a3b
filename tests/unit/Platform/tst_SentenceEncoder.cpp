// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/SentenceEncoder.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>

using namespace dugwise;
using namespace Qt::StringLiterals;

class TstSentenceEncoder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        auto table = EmbeddingTable::open(QStringLiteral(DUGWISE_EMBEDDING_TABLE));
        QVERIFY(table);
        m_table.emplace(std::move(*table));
        m_encoder.emplace(*m_table);
    }

    void calibratesDistances_data()
    {
        QTest::addColumn<double>("cosine");
        QTest::addColumn<double>("distance");
        QTest::newRow("opposite") << -1.0 << 2.0;
        QTest::newRow("unrelated") << -0.4 << 1.65;
        QTest::newRow("first knot") << 0.2 << 1.3;
        QTest::newRow("related") << 0.35 << 0.85;
        QTest::newRow("second knot") << 0.5 << 0.4;
        QTest::newRow("much the same") << 0.75 << 0.2;
        QTest::newRow("same") << 1.0 << 0.0;
        QTest::newRow("rounded up") << 1.000001 << 0.0;
        QTest::newRow("rounded down") << -1.000001 << 2.0;
    }
    void calibratesDistances()
    {
        QFETCH(const double, cosine);
        QFETCH(const double, distance);
        QVERIFY(std::abs(calibratedDistance(cosine) - distance) < 1e-9);
    }

    void findsWhatIsRelated_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QByteArray>("related");
        QTest::addColumn<QByteArray>("unrelated");
        const auto row = [](const char *request, const char *related, const char *unrelated) {
            QTest::newRow(request)
                << QByteArray(request) << QByteArray(related) << QByteArray(unrelated);
        };
        row("a car", "an automobile", "a sandwich");
        row("doctor", "physician in a hospital", "carpenter in a workshop");
        row("photos of the ocean", "picture of the sea.jpg", "spreadsheet of costs.xlsx");
        row("the king is dead", "death of a monarch", "a recipe for soup");
        row("kids playing football", "children at a soccer game", "adults signing a contract");
        row("rent an apartment", "lease for a flat", "history of the railway");
        row("bread and butter", "toast with margarine", "keyboard and mouse");
        row("song", "music.mp3", "invoice.pdf");
        row("he was buying shoes", "purchase of footwear", "planting of trees");
        row("puppy", "young dog", "old bridge");
        row("rain tomorrow", "weather forecast with showers", "stock market report");
        row("teacher of mathematics", "algebra professor", "opera singer");
        // Slips of the pen, and words written as one.
        row("elctricity", "electricity", "elasticity");
        row("restuarant", "restaurant", "instrument");
        row("birthdayparty", "birthday party", "political party");
        row("jalapeño soup", "Jalapeno Soup", "tomato soup");
    }
    void findsWhatIsRelated()
    {
        QFETCH(const QByteArray, request);
        QFETCH(const QByteArray, related);
        QFETCH(const QByteArray, unrelated);
        QCOMPARE_LT(distance(request, related), distance(request, unrelated) - 0.2);
        QCOMPARE_LT(distance(request, related), 1.3);
    }

    void keepsTheRulesOfADistance_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("one word") << QByteArray("house");
        QTest::newRow("sentence") << QByteArray("The quick brown fox jumps over the lazy dog.");
        QTest::newRow("function words") << QByteArray("it is what it is");
        QTest::newRow("long word") << QByteArray(5'000, 'a') + QByteArray(5'000, 'b');
        QTest::newRow("one character often") << QByteArray(5'000, 'x');
        QTest::newRow("single letters") << QByteArray("x ").repeated(5'000);
        QTest::newRow("digits") << QByteArray(5'000, '7');
        QTest::newRow("zero bytes") << QByteArray(5'000, '\0') + "end";
        QTest::newRow("no UTF-8") << QByteArray(5'000, '\xFF') + "end";
        QTest::newRow("right to left") << QByteArray("\u202Eשלום עולם end");
        QTest::newRow("combining marks") << "e" + QByteArray("\u0301").repeated(5'000);
        QTest::newRow("emoji") << QByteArray("👩‍👩‍👧 family ").repeated(500);
        QTest::newRow("unknown words") << distinctWords(30'000);
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("no words") << QByteArray("— … 東京");
    }
    void keepsTheRulesOfADistance()
    {
        QFETCH(const QByteArray, text);
        const SentenceVector vector = encode(text);
        QVERIFY(
            std::ranges::all_of(vector.values, [](float value) { return std::isfinite(value); }));
        const double length = std::sqrt(std::inner_product(
            vector.values.begin(), vector.values.end(), vector.values.begin(), 0.0));
        QVERIFY(std::abs(length - (vector.isEmpty ? 0 : 1)) < 1e-5);
        QCOMPARE(distance(text, text), 0.0);
        for (const char *other : {"house", "a long report about trade", "", "qqzzx", "1984"}) {
            const double there = distance(text, other);
            QVERIFY2(there >= 0 && there <= 2, other);
            QCOMPARE(distance(other, text), there);
            if (vector.isEmpty)
                QCOMPARE(there, *other == '\0' ? 0.0 : 2.0);
        }
    }

    void doesNotDependOnWhatItHasReadBefore()
    {
        const QByteArray text("The invoice of the plumber, paid in Marchh; see electricbill.pdf");
        SentenceEncoder busy(*m_table);
        QVERIFY(!busy.encode(distinctWords(30'000).toStdString()).isEmpty);
        QVERIFY(!busy.encode(text.toStdString()).isEmpty);
        for (const QByteArray &word : distinctWords(1'500).split(' '))
            QVERIFY(word.isEmpty() || std::isfinite(busy.encode(word.toStdString()).values[0]));
        QCOMPARE(busy.encode(text.toStdString()).values, encode(text).values);
        QCOMPARE(SentenceEncoder(*m_table).encode(text.toStdString()).values, encode(text).values);
    }

    void countsForeignWordsAsMereNames_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("hasMeaning");
        QTest::newRow("English") << QByteArray("Please pay the amount within thirty days.") << true;
        QTest::newRow("English with names")
            << QByteArray("Letter from Szymborska and Kowalczyk to the mayor of Katowice") << true;
        QTest::newRow("German") << QByteArray(
            "Bitte überweisen Sie den Betrag innerhalb von dreißig Tagen auf unser Konto.")
                                << false;
        QTest::newRow("French") << QByteArray(
            "Veuillez régler le montant dans les trente jours suivant la réception.")
                                << false;
        QTest::newRow("Spanish") << QByteArray(
            "Le rogamos que abone el importe en el plazo de treinta días.")
                                 << false;
        QTest::newRow("Italian") << QByteArray(
            "La preghiamo di pagare l'importo entro trenta giorni dalla ricezione.")
                                 << false;
        QTest::newRow("Polish") << QByteArray("Prosimy o zapłatę kwoty w ciągu trzydziestu dni.")
                                << false;
        QTest::newRow("too short to tell") << QByteArray("rechnung vom klempner") << true;
    }
    void countsForeignWordsAsMereNames()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const bool, hasMeaning);
        const SentenceVector vector = encode(text);
        const auto meaning = std::span(vector.values).first<EmbeddingFormat::kMeaningSize>();
        QCOMPARE(std::ranges::any_of(meaning, [](float value) { return value != 0; }), hasMeaning);
        QVERIFY(!vector.isEmpty);
    }

    void readsNames()
    {
        const SentenceVector words = encode("beach trip 2024");
        const SentenceVector name = m_encoder->encodeName("BeachTrip2024");
        QCOMPARE(SentenceVector::cosineDistance(words, name), 0.0);
    }

private:
    /// More than an encoder remembers, and none of them English.
    static QByteArray distinctWords(int count)
    {
        QByteArray words;
        for (int i = 0; i < count; ++i)
            words += 'q' + QByteArray::number(i, 26).replace('0', 'z') + ' ';
        return words;
    }
    SentenceVector encode(const QByteArray &text) { return m_encoder->encode(text.toStdString()); }
    double distance(const QByteArray &a, const QByteArray &b)
    {
        return SentenceVector::cosineDistance(encode(a), encode(b));
    }

    std::optional<EmbeddingTable> m_table;
    std::optional<SentenceEncoder> m_encoder;
};

QTEST_GUILESS_MAIN(TstSentenceEncoder)
#include "tst_SentenceEncoder.moc"
