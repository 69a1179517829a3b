// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace dugwise {

/// Text of a file or a name on one line: a sign stands for each character that controls a terminal,
/// begins a line or turns the direction of the text around it.
[[nodiscard]] QString printable(const QString &text);

/// The same for the beginning of a text of any length, as much as is read at a glance; white space
/// of all kinds is one blank.
[[nodiscard]] QString printableBeginning(const QString &text);

/// The same for a text of several lines: its line breaks become line feeds, its tabs four blanks.
[[nodiscard]] QString printableLines(const QString &text);

} // namespace dugwise
