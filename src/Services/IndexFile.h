// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"
#include "Utilities/Outcome.h"

#include <QList>

#include <optional>

/// The index on disk: one JSON array with an object for each record, keys named as the fields,
/// instants as seconds since 2001-01-01 UTC, absent optional fields left out. Both operations take
/// as long as the file is large and belong in a worker.
namespace dugwise::IndexFile {

/// The records of the file at `path`, in its order; absent when it is missing, unreadable or not
/// wholly an index.
[[nodiscard]] std::optional<QList<IndexedFile>> load(const QString &path);

/// Writes all records in place of the file at `path`, which is replaced as a whole or not at all.
[[nodiscard]] Outcome<Success> save(const QString &path, const QList<IndexedFile> &files);

} // namespace dugwise::IndexFile
