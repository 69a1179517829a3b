// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/SemanticSearchService.h"

#include "Platform/SentenceEmbedding.h"
#include "Utilities/Text.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace dugwise {

namespace {

constexpr std::size_t kNameCharacters = 500;
constexpr qsizetype kChunkWords = 300;
constexpr qsizetype kOverlapWords = 50;
constexpr qsizetype kMostChunks = 10;

struct Scored
{
    double score = 0;
    qsizetype position = 0; ///< in the list of files
};

} // namespace

SemanticSearchService::SemanticSearchService(EmbeddingProvider englishEmbedding)
    : m_englishEmbedding(std::move(englishEmbedding))
{}

QList<SemanticMatch> SemanticSearchService::search(const QString &query,
                                                   const QList<IndexedFile> &files,
                                                   double threshold,
                                                   qsizetype maxResults) const
{
    const SentenceEmbedding *embedding = m_cachedEmbedding;
    if (!embedding)
        m_cachedEmbedding = embedding = m_englishEmbedding();
    if (!embedding)
        return {};
    const std::unique_ptr<PassageQuery> asked = embedding->query(lowerCased(query).toUtf8());
    const std::unique_ptr<PassageEncoder> encoder = embedding->encoder();
    std::vector<Scored> scored;
    for (qsizetype i = 0; i < files.size(); ++i) {
        const QByteArray &kept = files[i].passageVectors();
        const double distance =
            asked->nearest(kept.isEmpty() ? vectors(*files[i], *encoder) : kept);
        const double score = std::max(0.0, 1 - 0.5 * distance);
        if (score >= threshold)
            scored.push_back({score, i});
    }
    const auto count = std::min<qsizetype>(maxResults, std::ssize(scored));
    const auto end = scored.begin() + count;
    std::ranges::partial_sort(scored, end, [](const Scored &a, const Scored &b) {
        return std::pair(-a.score, a.position) < std::pair(-b.score, b.position);
    });
    QList<SemanticMatch> matches;
    std::for_each(scored.begin(), end, [&](const Scored &match) {
        matches.append({files[match.position], match.score});
    });
    return matches;
}

QByteArray SemanticSearchService::vectors(const IndexedFileFields &file, PassageEncoder &encoder)
{
    const QByteArray whole = file.name.toUtf8();
    const auto length = static_cast<qsizetype>(prefixLength(view(whole), kNameCharacters));
    QByteArrayList passages;
    if (file.extractedText && !file.extractedText->text().isEmpty()) {
        passages = chunkText(file.extractedText->lowered(), kChunkWords, kOverlapWords);
        passages.resize(std::min(passages.size(), kMostChunks));
    }
    return encoder.vectors(whole.first(length), passages);
}

QByteArrayList chunkText(const QByteArray &text, qsizetype chunkSize, qsizetype overlap)
{
    QByteArrayList words = text.split(' ');
    words.removeAll({});
    if (words.size() <= chunkSize)
        return {text};
    QByteArrayList chunks;
    for (qsizetype start = 0; start < words.size(); start += chunkSize - overlap)
        chunks.append(words.mid(start, chunkSize).join(' '));
    return chunks;
}

} // namespace dugwise
