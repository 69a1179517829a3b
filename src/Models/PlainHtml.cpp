// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/PlainHtml.h"

using namespace Qt::StringLiterals;

namespace dugwise::PlainHtml {

QString escaped(const QString &text)
{
    return text.toHtmlEscaped().replace(u'\n', u"<br>"_s);
}

QString whole(const QString &html)
{
    return u"<span style=\"white-space: pre-wrap\">"_s + html + u"</span>"_s;
}

} // namespace dugwise::PlainHtml
