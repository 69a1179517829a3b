// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/Text.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>

namespace dugwise {

namespace {

constexpr bool isAscii(char c)
{
    return static_cast<unsigned char>(c) < 0x80;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion" // in the macros of ICU
#pragma GCC diagnostic ignored "-Wold-style-cast"

/// The code point at `at`, which moves behind it; negative when the bytes are not UTF-8.
UChar32 nextCodePoint(std::string_view text, std::size_t &at)
{
    UChar32 codePoint = 0;
    U8_NEXT(text.data(), at, text.size(), codePoint);
    return codePoint;
}

template <typename Bytes>
void appendCodePoint(Bytes &out, UChar32 codePoint)
{
    std::array<char, U8_MAX_LENGTH> bytes{};
    std::size_t length = 0;
    U8_APPEND_UNSAFE(bytes.data(), length, codePoint);
    out.append(bytes.data(), static_cast<qsizetype>(length));
}

#pragma GCC diagnostic pop

/// The capital whose lower-case form depends on its neighbours, the only one that does so in
/// every language.
constexpr UChar32 kCapitalSigma = 0x3A3;
/// The only code point that lower-cases to two: i and a combining dot above.
constexpr UChar32 kCapitalIWithDot = 0x130;

/// Length of the ASCII run at the start of `text`.
std::size_t asciiLength(std::string_view text)
{
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    std::size_t at = 0;
    for (std::uint64_t word = 0; at + sizeof(word) <= text.size(); at += sizeof(word)) {
        std::memcpy(&word, text.data() + at, sizeof(word));
        if ((word & kHighBits) != 0)
            break;
    }
    while (at < text.size() && isAscii(text[at]))
        ++at;
    return at;
}

/// Appends the lower-cased ASCII run at the start of `text` and returns its length.
template <typename Bytes>
std::size_t appendLoweredAscii(Bytes &out, std::string_view text)
{
    const std::size_t length = asciiLength(text);
    const auto before = out.size();
    out.append(text.data(), static_cast<qsizetype>(length));
    char *const appended = out.data() + before;
    for (std::size_t i = 0; i < length; ++i) {
        const char c = appended[i];
        appended[i] = static_cast<char>(c + ((c >= 'A' && c <= 'Z') ? 'a' - 'A' : 0));
    }
    return length;
}

/// Appends the lower-cased form of `text` to `out`; false when a capital sigma asks for the
/// general algorithm, with `out` then incomplete.
template <typename Bytes>
bool appendLowered(Bytes &out, std::string_view text)
{
    std::size_t at = 0;
    while (at < text.size()) {
        at += appendLoweredAscii(out, text.substr(at));
        while (at < text.size() && !isAscii(text[at])) {
            const std::size_t start = at;
            const UChar32 codePoint = nextCodePoint(text, at);
            if (codePoint == kCapitalSigma)
                return false;
            if (codePoint < 0)
                out.append(text.data() + start, static_cast<qsizetype>(at - start));
            else if (codePoint == kCapitalIWithDot)
                out.append("i\u0307", 3);
            else
                appendCodePoint(out, u_tolower(codePoint));
        }
    }
    return true;
}

std::string generalLowerCased(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    UErrorCode status = U_ZERO_ERROR;
    icu::StringByteSink sink(&out);
    const auto length = static_cast<int32_t>(text.size());
    icu::CaseMap::utf8ToLower("", 0, icu::StringPiece(text.data(), length), sink, nullptr, status);
    return out;
}

struct BreakIteratorCloser
{
    void operator()(UBreakIterator *iterator) const { ubrk_close(iterator); }
};

/// Calls visit(begin, end) for every character of `stretch` until it returns false; whether it
/// never did.
template <typename Visit>
bool visitWithRules(std::string_view stretch, Visit &visit)
{
    thread_local const std::unique_ptr<UBreakIterator, BreakIteratorCloser> iterator([] {
        UErrorCode status = U_ZERO_ERROR;
        return ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status);
    }());
    UErrorCode status = U_ZERO_ERROR;
    UText text = UTEXT_INITIALIZER;
    utext_openUTF8(&text, stretch.data(), static_cast<int64_t>(stretch.size()), &status);
    ubrk_setUText(iterator.get(), &text, &status);
    bool goOn = true;
    int32_t begin = 0;
    for (int32_t end = ubrk_next(iterator.get()); goOn && end != UBRK_DONE;
         end = ubrk_next(iterator.get())) {
        goOn = visit(static_cast<std::size_t>(begin), static_cast<std::size_t>(end));
        begin = end;
    }
    utext_close(&text);
    return goOn;
}

/// End of the stretch from `begin` that has to be split by the full rules: the first place
/// between two ASCII bytes, where a character always ends unless they are CR LF.
std::size_t endOfStretch(std::string_view text, std::size_t begin)
{
    for (std::size_t at = begin + 1; at < text.size(); ++at) {
        const bool isCrLf = text[at - 1] == '\r' && text[at] == '\n';
        if (isAscii(text[at - 1]) && isAscii(text[at]) && !isCrLf)
            return at;
    }
    return text.size();
}

/// Calls visit(begin, end), in bytes, for every character of `text` until it returns false.
/// ASCII is split here; only stretches around other characters go through the full rules.
template <typename Visit>
void visitCharacters(std::string_view text, Visit visit)
{
    std::size_t at = 0;
    while (at < text.size()) {
        const bool isLast = at + 1 == text.size();
        if (isAscii(text[at]) && (isLast || isAscii(text[at + 1]))) {
            const bool isCrLf = !isLast && text[at] == '\r' && text[at + 1] == '\n';
            const std::size_t end = at + (isCrLf ? 2 : 1);
            if (!visit(at, end))
                return;
            at = end;
            continue;
        }
        const std::size_t end = endOfStretch(text, at);
        const auto shifted = [&](std::size_t from, std::size_t to) {
            return visit(at + from, at + to);
        };
        if (!visitWithRules(text.substr(at, end - at), shifted))
            return;
        at = end;
    }
}

bool isWordCodePoint(UChar32 codePoint)
{
    return (U_MASK(u_charType(codePoint)) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0;
}

bool hasTwoCharacters(std::string_view word)
{
    return word.size() > 1 && prefixLength(word, 1) < word.size();
}

} // namespace

std::string_view view(const QByteArray &utf8)
{
    return {utf8.constData(), static_cast<std::size_t>(utf8.size())};
}

QString toQString(std::string_view utf8)
{
    constexpr std::string_view kByteOrderMark = "\uFEFF";
    const QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    return utf8.starts_with(kByteOrderMark) ? QChar(QChar::ByteOrderMark) + text : text;
}

std::string lowerCased(std::string_view utf8)
{
    std::string out;
    out.reserve(utf8.size());
    return appendLowered(out, utf8) ? out : generalLowerCased(utf8);
}

QString lowerCased(const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    return toQString(lowerCased(view(utf8)));
}

TextContent makeTextContent(QByteArray utf8)
{
    QByteArray lowered;
    lowered.reserve(utf8.size());
    if (!appendLowered(lowered, view(utf8)))
        lowered = QByteArray::fromStdString(generalLowerCased(view(utf8)));
    if (lowered == utf8)
        return {utf8, utf8};
    lowered.squeeze();
    return {std::move(utf8), std::move(lowered)};
}

std::size_t characterCount(std::string_view utf8)
{
    std::size_t count = 0;
    visitCharacters(utf8, [&](std::size_t, std::size_t) {
        ++count;
        return true;
    });
    return count;
}

std::size_t characterCount(const QString &text)
{
    return characterCount(view(text.toUtf8()));
}

std::vector<std::string_view> characters(std::string_view utf8)
{
    std::vector<std::string_view> found;
    visitCharacters(utf8, [&](std::size_t begin, std::size_t end) {
        found.push_back(utf8.substr(begin, end - begin));
        return true;
    });
    return found;
}

std::size_t prefixLength(std::string_view utf8, std::size_t count)
{
    std::size_t length = 0;
    std::size_t taken = 0;
    visitCharacters(utf8, [&](std::size_t, std::size_t end) {
        if (taken == count)
            return false;
        ++taken;
        length = end;
        return true;
    });
    return length;
}

QString firstCharacters(const QString &text, std::size_t count)
{
    const QByteArray utf8 = text.toUtf8();
    return toQString(view(utf8).substr(0, prefixLength(view(utf8), count)));
}

std::vector<std::string_view> words(std::string_view utf8)
{
    std::vector<std::string_view> found;
    std::size_t begin = 0;
    const auto endWord = [&](std::size_t end) {
        const std::string_view word = utf8.substr(begin, end - begin);
        if (hasTwoCharacters(word))
            found.push_back(word);
    };
    std::size_t at = 0;
    while (at < utf8.size()) {
        const std::size_t start = at;
        const UChar32 codePoint = nextCodePoint(utf8, at);
        if (codePoint < 0 || !isWordCodePoint(codePoint)) {
            endWord(start);
            begin = at;
        }
    }
    endWord(utf8.size());
    return found;
}

std::string_view trimmedBlanks(std::string_view utf8)
{
    const auto isBlank = [](UChar32 codePoint) {
        return codePoint == '\t' || u_charType(codePoint) == U_SPACE_SEPARATOR;
    };
    std::size_t begin = utf8.size();
    std::size_t end = utf8.size();
    bool isInside = false;
    for (std::size_t at = 0; at < utf8.size();) {
        const std::size_t start = at;
        if (isBlank(nextCodePoint(utf8, at)))
            continue;
        if (!isInside)
            begin = start;
        isInside = true;
        end = at;
    }
    return utf8.substr(begin, end - begin);
}

} // namespace dugwise
