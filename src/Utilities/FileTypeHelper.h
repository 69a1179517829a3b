// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/FileType.h"

#include <QString>

/// What an extension tells about a file. Extensions come without their dot.
namespace dugwise::FileTypeHelper {

/// The kind of a file with this extension, in any letter case; never `screenshot`, which shows in
/// a file's name and folder and not in its extension.
[[nodiscard]] FileType fileType(const QString &extension);

/// Name of the system symbol for the kind.
[[nodiscard]] QString sfSymbol(const QString &extension);

/// Name of the colour in which that symbol is drawn.
[[nodiscard]] QString iconColor(const QString &extension);

/// Whether files with exactly this extension (lower case) hold plain text.
[[nodiscard]] bool isTextExtractable(const QString &extension);

} // namespace dugwise::FileTypeHelper
