// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace dugwise {

/// The path of a "file:" URI on this machine (RFC 8089); absent for any other text.
[[nodiscard]] std::optional<QString> pathOfFileUri(const QString &uri);

} // namespace dugwise
