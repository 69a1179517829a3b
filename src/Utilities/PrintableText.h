// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace dugwise {

/// Text of a file or a name on one line: a sign stands for each character that controls a terminal,
/// begins a line or turns the direction of the text around it.
[[nodiscard]] QString printable(const QString &text);

/// The same for a text of several lines, whose line feeds stay.
[[nodiscard]] QString printableLines(const QString &text);

} // namespace dugwise
