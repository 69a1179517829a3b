// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/PassageVectors.h"

#include <QTest>

#include <cmath>
#include <numeric>
#include <random>

using namespace dugwise;

namespace {

/// A vector in a random direction, most of it meaning, and `share` of it that of another.
SentenceVector randomVector(std::mt19937 &random, const SentenceVector &other = {}, float share = 0)
{
    std::normal_distribution<float> normal;
    SentenceVector vector;
    vector.isEmpty = false;
    float squares = 0;
    for (std::size_t i = 0; i < vector.values.size(); ++i) {
        const float size = i < EmbeddingFormat::kMeaningSize ? 0.05F : 0.024F;
        vector.values[i] = (1 - share) * size * normal(random) + share * other.values[i];
        squares += vector.values[i] * vector.values[i];
    }
    for (float &value : vector.values)
        value /= std::sqrt(squares);
    return vector;
}

double distance(const SentenceVector &query, const QList<SentenceVector> &passages)
{
    return PassageVectors::Query(query).nearest(PassageVectors::packed(passages));
}

} // namespace

class TstPassageVectors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isNearTheExactDistance()
    {
        std::mt19937 random(1);
        for (int i = 0; i < 500; ++i) {
            const SentenceVector query = randomVector(random);
            const SentenceVector passage = randomVector(random, query, static_cast<float>(i) / 500);
            const double exact = SentenceVector::cosineDistance(query, passage);
            const double error = distance(query, {passage}) - exact;
            QVERIFY2(std::abs(error) < 0.1, QByteArray::number(error).constData());
        }
    }

    void isSmall()
    {
        std::mt19937 random(1);
        QCOMPARE(PassageVectors::packed(QList<SentenceVector>(5, randomVector(random))).size(),
                 5 * 228);
    }

    void takesTheNearest()
    {
        std::mt19937 random(2);
        const SentenceVector query = randomVector(random);
        const SentenceVector far = randomVector(random);
        const SentenceVector near = randomVector(random, query, 0.6F);
        const double least = distance(query, {near});
        QCOMPARE(distance(query, {far, near, far}), least);
        QCOMPARE(distance(query, {near, far}), least);
        QVERIFY(distance(query, {far}) > least);
        QVERIFY(distance(query, {query}) < 0.05);
    }

    void textsWithoutWordsAreFarthest()
    {
        std::mt19937 random(3);
        const SentenceVector vector = randomVector(random);
        QCOMPARE(distance(vector, {SentenceVector()}), 2);
        QCOMPARE(distance(SentenceVector(), {vector}), 2);
        QCOMPARE(distance(vector, {}), 2);
        QCOMPARE(distance(vector, {SentenceVector(), vector}), distance(vector, {vector}));
        QCOMPARE(PassageVectors::Query(vector).nearest("cut"), 2);
    }

    void wordingAloneCounts()
    {
        SentenceVector name;
        name.isEmpty = false;
        for (std::size_t i = EmbeddingFormat::kMeaningSize; i < name.values.size(); ++i)
            name.values[i] = i % 3 == 0 ? 0.0625F : -0.0625F;
        QVERIFY(distance(name, {name}) < 0.01);
    }
};

QTEST_GUILESS_MAIN(TstPassageVectors)
#include "tst_PassageVectors.moc"
