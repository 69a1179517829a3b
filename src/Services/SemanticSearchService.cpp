// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/SemanticSearchService.h"

#include "Platform/SentenceEmbedding.h"
#include "Utilities/Text.h"

#include <algorithm>
#include <span>
#include <string_view>
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

std::vector<std::string_view> wordsOf(std::string_view text)
{
    std::vector<std::string_view> words;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        if (end > at)
            words.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return words;
}

QByteArray joined(std::span<const std::string_view> words)
{
    QByteArray text;
    for (const std::string_view word : words) {
        if (!text.isEmpty())
            text.append(' ');
        text.append(word.data(), std::ssize(word));
    }
    return text;
}

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
    const std::vector<std::string_view> words = wordsOf(view(text));
    const qsizetype count = std::ssize(words);
    if (count <= chunkSize)
        return {text};
    QByteArrayList chunks;
    for (qsizetype start = 0; start < count; start += chunkSize - overlap) {
        const auto length = static_cast<std::size_t>(std::min(chunkSize, count - start));
        chunks.append(joined(std::span(words).subspan(static_cast<std::size_t>(start), length)));
    }
    return chunks;
}

} // namespace dugwise
