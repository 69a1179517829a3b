// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/IndexedFile.h"

#include <QByteArrayList>
#include <QList>

#include <atomic>
#include <functional>

namespace dugwise {

class PassageEncoder;
class SentenceEmbedding;

/// One file with how near it is in meaning to a request.
struct SemanticMatch
{
    IndexedFile file;
    double score = 0; ///< from 0 to 1
};

/// Scores files by meaning: by the nearest of a file's name and the passages of its text. Without
/// a sentence embedding nothing is found.
class SemanticSearchService
{
public:
    /// Gives the embedding, which outlives the service; null where there is none now.
    using EmbeddingProvider = std::function<const SentenceEmbedding *()>;

    explicit SemanticSearchService(EmbeddingProvider englishEmbedding);
    Q_DISABLE_COPY_MOVE(SemanticSearchService)
    virtual ~SemanticSearchService() = default;

    /// Best first, at most `maxResults`, none below `threshold`, files of equal score in their
    /// order. Files that carry no vectors yet take as long as making them.
    [[nodiscard]] virtual QList<SemanticMatch> search(const QString &query,
                                                      const QList<IndexedFile> &files,
                                                      double threshold,
                                                      qsizetype maxResults) const;

    /// The vectors of what is compared of a file: its name, and its text in passages that overlap.
    [[nodiscard]] static QByteArray vectors(const IndexedFileFields &file, PassageEncoder &encoder);

private:
    EmbeddingProvider m_englishEmbedding;
    /// Null until first had. Searches run in several threads.
    mutable std::atomic<const SentenceEmbedding *> m_cachedEmbedding = nullptr;
};

/// The passages of a text: the whole of it when it has at most `chunkSize` words, else so many
/// words each, the last `overlap` of one being the first of the next. Single spaces alone separate
/// words.
[[nodiscard]] QByteArrayList
chunkText(const QByteArray &text, qsizetype chunkSize, qsizetype overlap);

} // namespace dugwise
