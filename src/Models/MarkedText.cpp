// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/MarkedText.h"

#include "Models/PlainHtml.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

/// Letters and numbers, and what stands above and below them. The second half of a character beyond
/// the basic plane counts like its first.
bool belongsToWord(QChar c)
{
    return c.isLetterOrNumber() || c.isMark() || c.isSurrogate();
}

/// Length of the longest of the words that the text goes on with at a place; 0 when there is none.
qsizetype lengthOfWordAt(QStringView text, qsizetype at, const QStringList &words)
{
    qsizetype length = 0;
    for (const QString &word : words) {
        if (word.size() > length && text.sliced(at).startsWith(word, Qt::CaseInsensitive))
            length = word.size();
    }
    return length;
}

} // namespace

QString markedTextToHtml(const QString &text, const QStringList &words)
{
    using PlainHtml::escaped;
    QString html;
    qsizetype done = 0;
    bool isInWord = false;
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype length = isInWord ? 0 : lengthOfWordAt(text, at, words);
        if (length > 0) {
            html += escaped(text.sliced(done, at - done));
            html += u"<b>"_s + escaped(text.sliced(at, length)) + u"</b>"_s;
            done = at + length;
        }
        at += std::max<qsizetype>(length, 1);
        isInWord = belongsToWord(text.at(at - 1));
    }
    return PlainHtml::whole(html + escaped(text.sliced(done)));
}

} // namespace dugwise
