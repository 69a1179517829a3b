// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/Text.h"

#include <QTest>

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/unistr.h>

#include <memory>
#include <random>

using namespace Qt::StringLiterals;
using namespace dugwise;

namespace {

std::string referenceLowerCased(std::string_view text)
{
    std::string lowered;
    UErrorCode status = U_ZERO_ERROR;
    icu::StringByteSink sink(&lowered);
    icu::CaseMap::utf8ToLower("", 0, text, sink, nullptr, status);
    return lowered;
}

std::vector<std::string_view> referenceCharacters(std::string_view text)
{
    UErrorCode status = U_ZERO_ERROR;
    static const std::unique_ptr<icu::BreakIterator> iterator(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    UText source = UTEXT_INITIALIZER;
    utext_openUTF8(&source, text.data(), static_cast<int64_t>(text.size()), &status);
    iterator->setText(&source, status);
    std::vector<std::string_view> found;
    std::size_t begin = 0;
    for (int32_t end = iterator->next(); end != icu::BreakIterator::DONE; end = iterator->next()) {
        found.push_back(text.substr(begin, static_cast<std::size_t>(end) - begin));
        begin = static_cast<std::size_t>(end);
    }
    utext_close(&source);
    return found;
}

/// Calls check(text) for many texts of 0 to 14 pieces, the same ones at every run.
template <typename Check>
void forRandomTexts(const QByteArrayList &pieces, Check check)
{
    std::mt19937 random(20010101);
    for (int round = 0; round < 20000; ++round) {
        QByteArray text;
        for (auto left = random() % 15; left > 0; --left)
            text += pieces[static_cast<qsizetype>(random() % pieces.size())];
        QVERIFY2(check(view(text)), text.toHex(' ').constData());
    }
}

} // namespace

class TstText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lowerCasesEveryCodePoint()
    {
        for (UChar32 codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
            if (U_IS_SURROGATE(codePoint))
                continue;
            std::string text = "Ab";
            icu::UnicodeString(codePoint).toUTF8String(text);
            text += "I\u0301Zz";
            QVERIFY2(lowerCased(text) == referenceLowerCased(text), text.data());
        }
    }

    void lowerCasesAnyBytes()
    {
        const QByteArray pieces =
            "A|z| |Seven C|The Quick BROWN Fox [@`{] Jumps \0|Ä|ß|İ|I|i\u0307|Σ|\u0301|"
            "Ǆ|Ω|Ꭰ|\U00010400|\U0001F600|\xFF|\x80|\xC3|\xE2\x82|"
            "\xED\xA0\x80|\xF4\x90\x80\x80|\xC0\xC1"_ba;
        forRandomTexts(pieces.split('|'), [](std::string_view text) {
            const std::string expected = referenceLowerCased(text);
            const TextContent content =
                makeTextContent(QByteArray::fromStdString(std::string(text)));
            return lowerCased(text) == expected && view(content.lowered()) == expected
                   && view(content.text()) == text;
        });
    }

    void lowerCasesKnownWords()
    {
        QCOMPARE(lowerCased(u"Größe ÉTÉ ΟΔΥΣΣΕΥΣ. İI"_s), u"größe été οδυσσευς. i\u0307i"_s);
        const TextContent content = makeTextContent("straße 12"_ba);
        QVERIFY(content.lowered().constData() == content.text().constData());
    }

    void keepsByteOrderMarks()
    {
        QCOMPARE(toQString("\uFEFFa\uFEFF"), u"\uFEFFa\uFEFF"_s);
        QCOMPARE(toQString("\uFEFF\uFEFF"), u"\uFEFF\uFEFF"_s);
        QCOMPARE(lowerCased(u"\uFEFFA"_s), u"\uFEFFa"_s);
    }

    void splitsIntoCharacters()
    {
        const QByteArray pieces =
            "a|\r|\n|\r\n| |\0|e\u0301|\u0301|\u200D|\u200C|\uFE0F|\u20E3|\u00AD|\u0600|\U000110BD|"
            "\U0001F468|\U0001F469|\U0001F3FD|\u2764|\U0001F1E9|\U0001F1EA|\u0915|\u094D|\u0937|"
            "\u093F|\u0E33|\u1100|\u1161|\u11A8|\uAC00|\uAC01|\u2028|\U000E0067|\U000E007F|\xFF|"
            "\xE2\x82"_ba;
        forRandomTexts(pieces.split('|'), [](std::string_view text) {
            const auto expected = referenceCharacters(text);
            std::size_t length = 0;
            bool isRight = characters(text) == expected && characterCount(text) == expected.size();
            for (std::size_t count = 0; count < expected.size(); ++count) {
                isRight = isRight && prefixLength(text, count) == length;
                length += expected[count].size();
            }
            return isRight && prefixLength(text, expected.size()) == text.size()
                   && prefixLength(text, expected.size() + 1) == text.size();
        });
    }

    void findsWords_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("found");
        const auto row = [](const char *name, const QByteArray &text, const QByteArray &found) {
            QTest::newRow(name) << text << found;
        };
        row("nothing", "", "");
        row("file name", "Q3-Reports_final (2).pdf", "Q3|Reports|final|pdf");
        row("single ones", "a 1 é e\u0301 \u6771", "");
        row("repeats", "to to", "to|to");
        row("marks", "nai\u0308ve \u0939\u093F/", "nai\u0308ve");
        row("scripts",
            "\u6771\u4EAC \u0915\u0947\u0932\u093E",
            "\u6771\u4EAC|\u0915\u0947\u0932\u093E");
        row("numbers", "\u0661\u0662 \u2167\u2168 x\u00B2", "\u0661\u0662|\u2167\u2168|x\u00B2");
        row("signs", "ab\U0001F600cd\u2019ef\u00A0gh\0ij"_ba, "ab|cd|ef|gh|ij");
        row("not UTF-8", "ab\xFF|cd\xE2\x82", "ab|cd");
    }
    void findsWords()
    {
        QFETCH(const QByteArray, text);
        QByteArrayList found;
        for (const std::string_view word : words(view(text)))
            found.append(QByteArray::fromStdString(std::string(word)));
        QTEST(found.join('|'), "found");
    }

    void trimsBlanks()
    {
        QVERIFY(trimmedBlanks("") == "");
        QVERIFY(trimmedBlanks(" \t\u00A0") == "");
        QVERIFY(trimmedBlanks("\t a \t b\u3000\u00A0 ") == "a \t b");
        QVERIFY(trimmedBlanks(" \n a\r\n ") == "\n a\r\n");
        QVERIFY(trimmedBlanks(" \u200B\xFF ") == "\u200B\xFF");
    }
};

QTEST_GUILESS_MAIN(TstText)
#include "tst_Text.moc"
