// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/StringSimilarity.h"
#include "Utilities/Text.h"

#include <QTest>

#include <random>
#include <set>

using namespace dugwise;

namespace {

std::set<std::pair<std::string_view, std::string_view>> pairs(std::string_view word)
{
    const auto parts = characters(word);
    std::set<std::pair<std::string_view, std::string_view>> found;
    for (std::size_t i = 1; i < parts.size(); ++i)
        found.emplace(parts[i - 1], parts[i]);
    return found;
}

double plainSimilarity(std::string_view a, std::string_view b)
{
    const auto first = pairs(a);
    const auto second = pairs(b);
    if (first.empty() && second.empty())
        return 0;
    const auto isShared = [&](const auto &pair) { return second.contains(pair); };
    const auto common = static_cast<double>(std::ranges::count_if(first, isShared));
    return 2 * common / static_cast<double>(first.size() + second.size());
}

} // namespace

class TstStringSimilarity : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knownWords()
    {
        QCOMPARE(stringSimilarity("", ""), 0.0);
        QCOMPARE(stringSimilarity("", "abc"), 0.0);
        QCOMPARE(stringSimilarity("e\u0301", "e\u0301"), 0.0); // no pair in one character
        QCOMPARE(stringSimilarity("budget", "budget"), 1.0);
        QCOMPARE(stringSimilarity("invoice", "invoce"), 8.0 / 11);
        QCOMPARE(stringSimilarity("aaaa", "aa"), 1.0); // repeats count once
        QCOMPARE(stringSimilarity("ab", "ba"), 0.0);
        QCOMPARE(stringSimilarity("AB", "ab"), 0.0);
        QCOMPARE(stringSimilarity("cafe\u0301", "cafe"), 2.0 * 2 / (3 + 3));
    }

    void agreesWithSetsOfPairs()
    {
        const std::vector<std::string> pieces{
            "a", "b", "c", "é", "e\u0301", "ж", "\r\n", "\xFF", "\U0001F468\u200D\U0001F469"};
        std::mt19937 random(7);
        std::vector<std::string> all(120);
        for (std::string &word : all) {
            for (std::size_t left = random() % 12; left > 0; --left)
                word += pieces[random() % pieces.size()];
        }
        BigramTable table;
        std::vector<WordBigrams> bigrams;
        for (const std::string &word : all) {
            bigrams.push_back(table.bigrams(word));
            QCOMPARE(bigrams.back().characters, characterCount(word));
        }
        for (std::size_t i = 0; i < all.size(); ++i) {
            for (std::size_t j = 0; j < all.size(); ++j) {
                const double expected = plainSimilarity(all[i], all[j]);
                QCOMPARE(stringSimilarity(all[i], all[j]), expected);
                QCOMPARE(stringSimilarity(bigrams[i], bigrams[j]), expected);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TstStringSimilarity)
#include "tst_StringSimilarity.moc"
