// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/TextParts.h"

namespace dugwise {

namespace {

constexpr qsizetype kLongestPart = 3000; // takes some 10 ms to lay out, rich text included

/// Where to cut before `limit` when there is no line end: behind a blank, or else between
/// characters.
qsizetype cutWithinLine(const QString &text, qsizetype start, qsizetype limit)
{
    const qsizetype blank = text.lastIndexOf(u' ', limit - 1);
    if (blank > start)
        return blank + 1;
    return text[limit].isLowSurrogate() ? limit - 1 : limit;
}

} // namespace

QList<TextPart> textParts(const QString &text)
{
    QList<TextPart> parts;
    qsizetype start = 0;
    while (text.size() - start > kLongestPart) {
        const qsizetype limit = start + kLongestPart;
        const qsizetype lineEnd = text.lastIndexOf(u'\n', limit);
        const bool isAtLineEnd = lineEnd > start;
        const qsizetype end = isAtLineEnd ? lineEnd : cutWithinLine(text, start, limit);
        parts.append({start, end - start});
        start = isAtLineEnd ? end + 1 : end;
    }
    parts.append({start, text.size() - start});
    return parts;
}

} // namespace dugwise
