// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace dugwise {

/// A text as HTML in which nothing is markup but what stands between pairs of ** (bold) and its
/// line breaks. A mark without its pair, or with nothing inside, stays as it is.
[[nodiscard]] QString boldTextToHtml(const QString &text);

/// The text without marks of bold type, for reading it out.
[[nodiscard]] QString boldTextToPlain(const QString &text);

} // namespace dugwise
