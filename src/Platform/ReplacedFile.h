// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Utilities/Outcome.h"

#include <QString>

#include <functional>

class QFile;

namespace dugwise {

/// Writes the file at `path` anew, readable by its owner only: whoever reads it, at any moment and
/// after any crash, reads the whole old one or the whole new one. `write` gets the new file,
/// opened, and says whether it is all there. The new one is prepared as "<path>.new"; writers of
/// one path must keep each other out.
[[nodiscard]] Outcome<Success> replaceFile(const QString &path,
                                           const std::function<bool(QFile &file)> &write);

} // namespace dugwise
