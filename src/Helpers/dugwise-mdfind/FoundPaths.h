// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayList>
#include <QStringList>

/// What the search services print, as paths. Left out is what cannot be told one path a line: names
/// that are not UTF-8 or have a line feed in them.
namespace dugwise {

/// Of each file: URI of this machine.
[[nodiscard]] QStringList pathsOfUris(const QByteArrayList &uris);

/// One path a line.
[[nodiscard]] QStringList pathsOfLines(const QByteArray &output);

/// Each path ended by a NUL.
[[nodiscard]] QStringList pathsEndedByNul(const QByteArray &output);

} // namespace dugwise
