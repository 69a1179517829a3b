// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"

#include <QList>

/// The vectors of the index's files, kept in the cache folder beside the index: one file, of one
/// version of the embedding, with a checksum. It finds the vectors of a file by a hash of its name
/// and text, and holds those of the files that it was written for, no others. Both operations take
/// as long as the index is large and belong in a worker.
namespace dugwise::VectorFile {

/// The same files, with their vectors where the file at `path` has them. Without any when that is
/// missing, damaged, or of another version.
[[nodiscard]] QList<IndexedFile>
attach(const QList<IndexedFile> &files, const QString &path, quint64 version);

/// Writes the vectors that the files carry in place of the file at `path`, which is replaced as a
/// whole or not at all. One that cannot be written only has to be made again.
void save(const QList<IndexedFile> &files, const QString &path, quint64 version);

} // namespace dugwise::VectorFile
