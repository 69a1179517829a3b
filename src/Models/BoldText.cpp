// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/BoldText.h"

#include "Models/PlainHtml.h"

using namespace Qt::StringLiterals;

namespace dugwise {

QString boldTextToHtml(const QString &text)
{
    using PlainHtml::escaped;
    static const QString kMark = u"**"_s;
    QString html;
    qsizetype at = 0;
    for (;;) {
        const qsizetype start = text.indexOf(kMark, at);
        const qsizetype end = start < 0 ? -1 : text.indexOf(kMark, start + kMark.size());
        if (end < 0)
            break;
        const QString inside = text.sliced(start + kMark.size(), end - start - kMark.size());
        html += escaped(text.sliced(at, start - at));
        html += inside.isEmpty() ? kMark + kMark : u"<b>"_s + escaped(inside) + u"</b>"_s;
        at = end + kMark.size();
    }
    return PlainHtml::whole(html + escaped(text.sliced(at)));
}

QString boldTextToPlain(const QString &text)
{
    return QString(text).remove("**"_L1);
}

} // namespace dugwise
