// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/StringSimilarity.h"
#include "Utilities/Text.h"

#include <QTest>

#include <random>
#include <set>

using namespace dugwise;

namespace {

double plainSimilarity(std::string_view a, std::string_view b)
{
    const auto pairs = [](std::string_view word) {
        const auto parts = characters(word);
        std::set<std::pair<std::string_view, std::string_view>> found;
        for (std::size_t i = 1; i < parts.size(); ++i)
            found.emplace(parts[i - 1], parts[i]);
        return found;
    };
    const auto first = pairs(a);
    const auto second = pairs(b);
    const auto isShared = [&](const auto &pair) { return second.contains(pair); };
    const auto common = static_cast<double>(std::ranges::count_if(first, isShared));
    return common == 0 ? 0 : 2 * common / static_cast<double>(first.size() + second.size());
}

} // namespace

class TstStringSimilarity : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void agreesWithSetsOfPairs()
    {
        QCOMPARE(stringSimilarity("invoice", "invoce"), 8.0 / 11);
        QCOMPARE(stringSimilarity("aaaa", "aa"), 1.0); // repeats count once
        const std::vector<std::string> pieces{
            "a", "A", "b", "é", "e\u0301", "ж", "\r\n", "\xFF", "\U0001F468\u200D\U0001F469"};
        std::mt19937 random(7);
        std::vector<std::string> all(120); // empty ones and single characters among them
        for (std::string &word : all) {
            for (std::size_t left = random() % 12; left > 0; --left)
                word += pieces[random() % pieces.size()];
        }
        BigramTable table;
        for (const std::string &a : all) {
            QCOMPARE(table.bigrams(a).characters, characterCount(a));
            for (const std::string &b : all) {
                QCOMPARE(stringSimilarity(a, b), plainSimilarity(a, b));
                QCOMPARE(stringSimilarity(table.bigrams(a), table.bigrams(b)),
                         plainSimilarity(a, b));
            }
        }
    }
};

QTEST_GUILESS_MAIN(TstStringSimilarity)
#include "tst_StringSimilarity.moc"
