// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/PrintableText.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

QString printable(const QString &text)
{
    QString shown = text;
    for (QChar &c : shown) {
        const bool isLineBreak = c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
        // The others turn the direction of the text around them.
        const bool isTurning =
            (c >= u'\u202A' && c <= u'\u202E') || (c >= u'\u2066' && c <= u'\u2069');
        if (isLineBreak || c.category() == QChar::Other_Control || isTurning)
            c = QChar::ReplacementCharacter;
    }
    return shown;
}

QString printableLines(const QString &text)
{
    QString plain = text;
    plain.replace("\r\n"_L1, "\n"_L1).replace(u'\r', u'\n').replace(u'\f', u'\n');
    QStringList lines = plain.replace(u'\t', u"    "_s).split(u'\n');
    std::ranges::transform(lines, lines.begin(), printable);
    return lines.join(u'\n');
}

QString printableBeginning(const QString &text)
{
    constexpr qsizetype kMost = 300;
    QString shown = text.left(4 * kMost).simplified();
    if (shown.size() > kMost) {
        shown.truncate(shown[kMost - 1].isHighSurrogate() ? kMost - 1 : kMost);
        shown += u'\u2026';
    }
    return printable(shown);
}

} // namespace dugwise
