// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"

#include <QFuture>
#include <QList>
#include <QThreadPool>

#include <stop_token>

namespace dugwise {

class SentenceEmbedding;

/// The same files, with vectors where they had none; as they were when `embedding` is null or
/// `stop` is requested. Takes a while: for workers.
[[nodiscard]] QList<IndexedFile> withVectors(const QList<IndexedFile> &files,
                                             const SentenceEmbedding *embedding,
                                             const std::stop_token &stop);

/// The same of many files, in all of the pool's threads; the results follow one another.
[[nodiscard]] QFuture<QList<IndexedFile>> withVectorsInThreads(const QList<IndexedFile> &files,
                                                               const SentenceEmbedding *embedding,
                                                               const std::stop_token &stop,
                                                               QThreadPool &workers);

} // namespace dugwise
