// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// HTML that shows a text as it is.
namespace dugwise::PlainHtml {

/// The text with nothing in it that is markup; line feeds become line breaks.
[[nodiscard]] QString escaped(const QString &text);

/// The whole of it, in which runs of blanks stay as they are.
[[nodiscard]] QString whole(const QString &html);

} // namespace dugwise::PlainHtml
