// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace dugwise {

struct Platform;

/// The text of the file at an absolute path, as the preview shows it; links are followed. Absent
/// when there is no such file, or no text in it.
[[nodiscard]] std::optional<QString> previewText(const Platform &platform, const QString &path);

} // namespace dugwise
