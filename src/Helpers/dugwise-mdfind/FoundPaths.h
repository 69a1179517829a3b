// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QStringList>

#include <optional>

/// What the search services print, as paths. Left out is what cannot be told one path a line: names
/// that are not UTF-8 or have a line feed in them.
namespace dugwise {

/// The local path of a file: URI (RFC 8089).
[[nodiscard]] std::optional<QString> pathOfUri(const QByteArray &uri);

/// One path a line.
[[nodiscard]] QStringList pathsOfLines(const QByteArray &output);

/// Each path ended by a NUL.
[[nodiscard]] QStringList pathsEndedByNul(const QByteArray &output);

} // namespace dugwise
