// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace dugwise {

/// The path of one of our small programs: beside the running one, as it is built, or in
/// ../libexec/dugwise, as it is installed. Absent when it is in neither.
[[nodiscard]] std::optional<QString> helperProgram(const QString &name);

/// The path of a file that belongs to the program: beside it, as it is built, or in
/// ../share/dugwise, as it is installed. Absent when it is in neither.
[[nodiscard]] std::optional<QString> dataFile(const QString &name);

} // namespace dugwise
