// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/RecordVectors.h"

#include "Platform/SentenceEmbedding.h"
#include "Services/SemanticSearchService.h"

#include <QtConcurrentMap>

namespace dugwise {

namespace {

/// Files that one encoder meets, which remembers their words.
constexpr qsizetype kBatch = 256;

} // namespace

QList<IndexedFile> withVectors(const QList<IndexedFile> &files,
                               const SentenceEmbedding *embedding,
                               const std::stop_token &stop)
{
    if (!embedding)
        return files;
    const std::unique_ptr<PassageEncoder> encoder = embedding->encoder();
    QList<IndexedFile> complete;
    complete.reserve(files.size());
    for (const IndexedFile &file : files) {
        if (file.passageVectors().isEmpty() && !stop.stop_requested()) {
            complete.append(IndexedFile(*file, SemanticSearchService::vectors(*file, *encoder)));
        } else {
            complete.append(file);
        }
    }
    return complete;
}

QFuture<QList<IndexedFile>> withVectorsInThreads(const QList<IndexedFile> &files,
                                                 const SentenceEmbedding *embedding,
                                                 const std::stop_token &stop,
                                                 QThreadPool &workers)
{
    QList<QList<IndexedFile>> batches;
    for (qsizetype start = 0; start < files.size(); start += kBatch)
        batches.append(files.mid(start, kBatch));
    return QtConcurrent::mapped(
        &workers, std::move(batches), [embedding, stop](const QList<IndexedFile> &batch) {
            return withVectors(batch, embedding, stop);
        });
}

} // namespace dugwise
