// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/SearchResult.h"
#include "Utilities/LiteralMatcher.h"
#include "Utilities/SearchTerms.h"

#include <QHash>

#include <string>
#include <vector>

namespace dugwise {

class NameSimilarity;

/// What a file earned: points, and the reasons in the order in which they were first earned.
struct FileScore
{
    double points = 0;
    QList<SearchResult::MatchReason> reasons;
};

/// Scores files against the terms of one request. Keeps what files share from one call to the
/// next (folders, words in names), so it belongs to one search and one thread.
class FileScorer
{
public:
    /// A file's nearness in meaning counts when it is above this.
    static constexpr double kSemanticThreshold = 0.35;

    /// `semanticScores` maps paths to scores from 0 to 1.
    FileScorer(SearchTerms terms, QHash<QString, double> semanticScores, Instant now);
    Q_DISABLE_COPY_MOVE(FileScorer)
    ~FileScorer();

    [[nodiscard]] FileScore score(const IndexedFile &file);

private:
    struct Keyword
    {
        std::size_t number = 0;            ///< among the distinct keywords
        std::vector<std::size_t> variants; ///< literals; the keyword itself first
    };
    struct Phrase
    {
        std::size_t whole = 0;
        std::vector<std::vector<std::size_t>> words; ///< the variants of each
    };
    /// One file's lower-cased texts and what was found in them.
    struct Haystacks;

    [[nodiscard]] std::size_t literal(const QString &text);
    [[nodiscard]] std::vector<std::size_t> variants(const QString &word);
    [[nodiscard]] static bool phraseMatch(const Phrase &phrase, const FoundLiterals &found);

    void lookInto(const IndexedFile &file);
    void scoreKeywords(FileScore &score);
    void scorePhrases(FileScore &score) const;
    void scoreFacts(const IndexedFile &file, FileScore &score) const;
    void scoreDownloadSource(const IndexedFile &file, FileScore &score);
    void scoreRecency(const IndexedFile &file, FileScore &score) const;

    SearchTerms m_terms;
    QHash<QString, double> m_semanticScores;
    Instant m_now;
    LiteralSet m_literals;
    std::vector<Keyword> m_keywords;
    std::vector<Phrase> m_phrases;
    std::unique_ptr<LiteralMatcher> m_matcher;
    std::unique_ptr<NameSimilarity> m_similarity;
    std::unique_ptr<Haystacks> m_haystacks;
};

} // namespace dugwise
