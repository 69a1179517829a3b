// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/FoldedText.h"
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

} // namespace

class TstText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void folds_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("ASCII") << u"Budget REVIEW [2]!"_s << u"budget review [2]!"_s;
        QTest::newRow("German") << u"GRÖSSE Größe"_s << u"grosse grosse"_s;
        QTest::newRow("in one piece or several") << u"é e\u0301 \u1E9B\u0323 ế"_s << u"e e s e"_s;
        QTest::newRow("Greek") << u"ΆΣΑΣ άσας"_s << u"ασασ ασασ"_s;
        QTest::newRow("Turkish") << u"İIı"_s << u"iiı"_s;
        QTest::newRow("Cyrillic") << u"ЙЁ"_s << u"ие"_s;
        QTest::newRow("beyond the first plane") << u"𐐀👩🏽"_s << u"𐐨👩🏽"_s;
        QTest::newRow("only a mark") << u"\u0301"_s << u""_s;
    }
    void folds()
    {
        QFETCH(QString, text);
        QTEST(QString::fromStdString(folded(text.toStdString())), "expected");
        QTEST(QString::fromStdString(folded(folded(text.toStdString()))), "expected");
    }

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

    void treatsAnyBytesAsIcuDoes()
    {
        const QByteArrayList pieces =
            "A|z|Seven C|The Quick BROWN Fox [@`{] Jumps "
            "\0|Ä|ß|İ|I|i\u0307|Σ|Ǆ|Ω|Ꭰ|\U00010400|\x80|"
            "\xC3|\xE2\x82|\xED\xA0\x80|\xF4\x90\x80\x80|\xC0\xC1|\xFF|\U0001F600|"
            "\r|\n|\r\n| |\0|e\u0301|\u0301|\u200D|\u200C|\uFE0F|\u20E3|\u00AD|\u0600|\U000110BD|"
            "\U0001F468|\U0001F469|\U0001F3FD|\u2764|\U0001F1E9|\U0001F1EA|\u0915|\u094D|\u0937|"
            "\u093F|\u0E33|\u1100|\u1161|\u11A8|\uAC00|\uAC01|\u2028|\U000E0067|\U000E007F"_ba
                .split('|');
        std::mt19937 random(20010101);
        for (int round = 0; round < 80000; ++round) {
            QByteArray bytes;
            for (auto left = random() % 15; left > 0; --left)
                bytes += pieces[static_cast<qsizetype>(random() % pieces.size())];
            const std::string_view text = view(bytes);
            const std::string lowered = referenceLowerCased(text);
            const auto parts = referenceCharacters(text);
            const TextContent content = makeTextContent(bytes);
            bool isRight = lowerCased(text) == lowered && view(content.lowered()) == lowered
                           && content.text() == bytes && characters(text) == parts
                           && characterCount(text) == parts.size();
            std::size_t length = 0;
            for (std::size_t count = 0; count < parts.size() + 2; ++count) {
                isRight = isRight && prefixLength(text, count) == length;
                length += count < parts.size() ? parts[count].size() : 0;
            }
            QVERIFY2(isRight, bytes.toHex(' ').constData());
        }
    }

    void keepsWhatItLeavesAsItIs()
    {
        QCOMPARE(lowerCased(u"\uFEFFÉTÉ ΟΔΥΣΣΕΥΣ. İI"_s), u"\uFEFFété οδυσσευς. i\u0307i"_s);
        QCOMPARE(toQString("\uFEFF\uFEFFa\uFEFF"), u"\uFEFF\uFEFFa\uFEFF"_s);
        const TextContent content = makeTextContent("straße 12"_ba);
        QVERIFY(content.lowered().constData() == content.text().constData());
    }

    void findsWords()
    {
        const QByteArray text =
            "Q3-Reports_final (2).pdf a 1 é e\u0301 \u6771, to to nai\u0308ve \u0939\u093F/"
            "\u6771\u4EAC \u0915\u0947\u0932\u093E \u0661\u0662 \u2167\u2168 x\u00B2 "
            "ab\U0001F600cd\u2019ef\u00A0gh\0ij\xFF|kl\xE2\x82"_ba;
        QByteArrayList found;
        for (const std::string_view word : words(view(text)))
            found.append(QByteArray::fromStdString(std::string(word)));
        QCOMPARE(found.join('|'),
                 "Q3|Reports|final|pdf|to|to|nai\u0308ve|\u6771\u4EAC|\u0915\u0947\u0932\u093E|"
                 "\u0661\u0662|\u2167\u2168|x\u00B2|ab|cd|ef|gh|ij|kl"_ba);
        QVERIFY(words("").empty());
    }

    void trimsBlanks()
    {
        QVERIFY(trimmedBlanks(" \t\u00A0") == "");
        QVERIFY(trimmedBlanks("\t a \t b\u3000\u00A0 ") == "a \t b");
        QVERIFY(trimmedBlanks(" \n a\r\n ") == "\n a\r\n");
        QVERIFY(trimmedBlanks(" \u200B\xFF ") == "\u200B\xFF");
    }
};

QTEST_GUILESS_MAIN(TstText)
#include "tst_Text.moc"
