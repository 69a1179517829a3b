// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/LiteralMatcher.h"

#include <QTest>

#include <random>

using namespace std::string_literals;
using namespace dugwise;

namespace {

using Strings = std::vector<std::string>;

/// What the matcher finds in each text is what plain searching finds.
void compare(const Strings &literals, const Strings &texts)
{
    LiteralSet set;
    std::vector<std::size_t> numbers;
    for (const std::string &literal : literals)
        numbers.push_back(set.add(literal));
    const LiteralMatcher matcher(set);
    FoundLiterals found(set.literals().size());
    for (const std::string &text : texts) {
        matcher.scan(text, found);
        for (std::size_t i = 0; i < literals.size(); ++i) {
            const bool isIn = !literals[i].empty() && text.find(literals[i]) != std::string::npos;
            if (found.contains(numbers[i]) != isIn)
                QFAIL(QByteArray::fromStdString(literals[i] + " in " + text).toPercentEncoding());
        }
    }
}

} // namespace

class TstLiteralMatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void holdsEqualLiteralsOnce()
    {
        LiteralSet set;
        const std::vector numbers{set.add("one"), set.add(""), set.add("one"), set.add("one\0"s)};
        QCOMPARE(numbers, (std::vector<std::size_t>{0, 1, 0, 2}));
        QCOMPARE(set.literals(), (Strings{"one", "", "one\0"s}));
    }

    void findsBytesAsTheyAre()
    {
        compare({}, {"", "text"});
        compare({"", "text", "text"}, {"", "text", "tex"});
        compare({"\0"s, "a\0b"s, "A", "a.c", "(", "[a-z]+", "\\d", "^", "\n", "\xFF", "é", "É"},
                {"a\0b"s, "abc", "a.c", "[a-z]+", "x\\d", "5", "\r\n", "\xFE\xFF", "caf\u00E9"});
    }

    void findsWhatPlainSearchingFinds()
    {
        for (int round = 0; round < 200 && !QTest::currentTestFailed(); ++round) {
            const bool isLarge = round == 0;
            const std::string alphabet = isLarge          ? "abcdefghijklmnopqrstuvwxyz"s
                                         : round % 2 == 0 ? "ab\0\xC3"s
                                                          : "abcdefgh -"s;
            Strings texts{randomText(20000, alphabet)};
            while (texts.size() < 21)
                texts.push_back(randomText(200, alphabet));
            Strings literals(isLarge ? 20000 : below(60));
            for (std::string &literal : literals)
                literal = randomText(8, alphabet);
            // Pieces of the texts themselves, long ones too.
            for (std::size_t left = below(20); left > 0; --left) {
                const std::string &text = texts[below(texts.size())];
                literals.push_back(text.substr(below(text.size() + 1), below(2000)));
            }
            compare(literals, texts);
        }
    }

private:
    std::size_t below(std::size_t limit) { return m_random() % limit; }
    std::string randomText(std::size_t longest, const std::string &alphabet)
    {
        std::string text(below(longest + 1), ' ');
        for (char &c : text)
            c = alphabet[below(alphabet.size())];
        return text;
    }

    std::mt19937 m_random{42};
};

QTEST_GUILESS_MAIN(TstLiteralMatcher)
#include "tst_LiteralMatcher.moc"
