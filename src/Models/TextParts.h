// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

namespace dugwise {

/// A stretch of a text, in UTF-16 units.
struct TextPart
{
    qsizetype start = 0;
    qsizetype length = 0;
};

/// Cuts a long text into stretches that are each laid out within a frame, at line ends where there
/// are any; the line feeds that it is cut at are in none of them. A text that is not long is one.
[[nodiscard]] QList<TextPart> textParts(const QString &text);

} // namespace dugwise
