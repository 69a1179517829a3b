// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine/AnswerText.h"

#include "Utilities/FileTypeHelper.h"
#include "Utilities/Formatters.h"
#include "Utilities/PrintableText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

QString bold(const QString &text, const TextStyle &style)
{
    return style.isTerminal ? u"\033[1m"_s + text + u"\033[22m"_s : text;
}

QString dim(const QString &text, const TextStyle &style)
{
    return style.isTerminal ? u"\033[2m"_s + text + u"\033[22m"_s : text;
}

/// Text between pairs of ** in bold; a mark without its pair stays.
QString boldMarked(const QString &text, const TextStyle &style)
{
    const QStringList parts = text.split("**"_L1);
    QString shown = parts.first();
    for (qsizetype i = 1; i < parts.size(); ++i) {
        const bool isLast = i + 1 == parts.size();
        if (i % 2 == 0)
            shown += parts[i];
        else
            shown += isLast ? u"**"_s + parts[i] : bold(parts[i], style);
    }
    return shown;
}

QString shortened(const QString &path, const TextStyle &style)
{
    const bool isBelowHome = path == style.home || path.startsWith(style.home + u'/');
    return isBelowHome ? u'~' + path.sliced(style.home.size()) : path;
}

QString resultText(qsizetype number, const SearchResult &result, const TextStyle &style)
{
    const IndexedFile &file = result.file;
    const QString facts = u"%1, %2"_s.arg(
        displayName(FileTypeHelper::fileType(file->fileExtension)), byteCount(file->size));
    const QString indent = u"     "_s;
    return u"%1 %2  %3\n"_s.arg(u"#%1"_s.arg(number).rightJustified(4),
                                bold(printable(file->name), style),
                                dim(facts, style))
           + indent + dim(printable(shortened(file->folderPath, style)), style) + u'\n' + indent
           + printable(result.summary) + u'\n';
}

QString crossAppText(const CrossAppResult &result, const TextStyle &style, Instant now)
{
    const QString indent = u"     "_s;
    QString text = u"   - "_s + bold(printableBeginning(result.title), style) + u"  "_s
                   + dim(rawValue(result.source) + u", "_s + relativeTime(result.date, now), style)
                   + u'\n';
    for (const QString &line : {result.subtitle, result.snippet}) {
        if (!line.isEmpty())
            text += indent + printableBeginning(line) + u'\n';
    }
    return text;
}

} // namespace

QString answerText(const ChatMessage &answer, const TextStyle &style, Instant now)
{
    QString text = boldMarked(printableLines(answer.content), style) + u'\n';
    for (qsizetype i = 0; i < answer.results.size(); ++i)
        text += u'\n' + resultText(i + 1, answer.results[i], style);
    for (const CrossAppResult &result : answer.crossAppResults)
        text += u'\n' + crossAppText(result, style, now);
    return text;
}

} // namespace dugwise
