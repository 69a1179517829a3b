// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-mdfind/SearchRequest.h"

#include "Utilities/DateIntentParser.h"
#include "Utilities/Text.h"

#include <algorithm>
#include <iterator>
#include <string>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr qsizetype kLongestName = 255; // as file systems have it
/// More would only narrow a search that has long found its file.
constexpr qsizetype kMostWords = 6;

bool isLetterOrDigit(char32_t c)
{
    return QChar::isLetterOrNumber(c) || QChar::isMark(c);
}

bool isSeparator(char32_t c)
{
    return QChar::isSpace(c) || c < U' '
           || std::u32string_view(U"\"():=<>*").find(c) != std::u32string_view::npos;
}

/// What stands between separators, from its first letter or digit to its last.
QStringList parts(const QString &text)
{
    const std::u32string characters = text.toStdU32String();
    QStringList all;
    auto end = characters.begin();
    while (end != characters.end()) {
        const auto begin = std::find_if_not(end, characters.end(), isSeparator);
        end = std::find_if(begin, characters.end(), isSeparator);
        const auto first = std::find_if(begin, end, isLetterOrDigit);
        const auto last =
            std::find_if(std::reverse_iterator(end), std::reverse_iterator(first), isLetterOrDigit);
        if (first != end)
            all.append(QString::fromStdU32String(std::u32string(first, last.base())));
    }
    return all;
}

bool isFiller(const QString &part)
{
    const QByteArray utf8 = part.toUtf8();
    return !words(view(utf8)).empty() && DateIntentParser::extractKeywords(part).isEmpty();
}

/// The letters and digits that the part has first.
QString leadingWord(const QString &part)
{
    const std::u32string characters = part.toStdU32String();
    const auto end = std::ranges::find_if_not(characters, isLetterOrDigit);
    return QString::fromStdU32String(std::u32string(characters.begin(), end));
}

bool isNumber(const QString &word)
{
    return std::ranges::all_of(word, [](QChar c) { return c.isDigit(); });
}

QString balooNameQuery(const QString &text)
{
    QStringList terms;
    for (const QString &part : parts(lowerCased(text)))
        terms.append(leadingWord(part));
    // Baloo takes a number for a value, and finds the names that have it as a whole word.
    if (!std::ranges::all_of(terms, isNumber))
        terms.removeIf(isNumber);
    terms.resize(std::min(terms.size(), kMostWords));
    for (QString &term : terms)
        term.prepend("filename:"_L1);
    return terms.join(u' ');
}

} // namespace

bool canBeInName(const QString &text)
{
    return text.size() <= kLongestName && !text.contains(u'/') && !text.contains(u'\n')
           && !text.contains(QChar(0));
}

QStringList contentWords(const QString &text)
{
    const QStringList all = parts(lowerCased(text));
    QStringList kept = all;
    kept.removeIf(isFiller);
    if (kept.isEmpty())
        kept = all;
    kept.removeDuplicates();
    kept.resize(std::min(kept.size(), kMostWords));
    return kept;
}

QString balooQuery(const SearchRequest &request)
{
    // Lower-cased as they are, no part is one of the operators AND and OR.
    return request.isByName ? balooNameQuery(request.text) : contentWords(request.text).join(u' ');
}

QString plocatePattern(const QString &text)
{
    QString pattern;
    for (const QChar c : text) {
        if (u"*?[]\\"_s.contains(c))
            pattern.append(u'\\');
        pattern.append(c);
    }
    return pattern;
}

} // namespace dugwise
