// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Parts of absolute paths, taken from the text alone.
namespace dugwise::FilePath {

/// The last component.
[[nodiscard]] QString name(const QString &path);

/// What follows the last dot of the last component, in its own case; empty when there is no dot,
/// or only one at its beginning or end.
[[nodiscard]] QString fileExtension(const QString &path);

/// The path without its last component.
[[nodiscard]] QString folder(const QString &path);

} // namespace dugwise::FilePath
