// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace dugwise {

/// A text as HTML in which nothing is markup but its line breaks and a <b> around each of `words`
/// where a word of the text begins with it, in any letter case. Of several that begin at one place
/// the longest is marked.
[[nodiscard]] QString markedTextToHtml(const QString &text, const QStringList &words);

} // namespace dugwise
