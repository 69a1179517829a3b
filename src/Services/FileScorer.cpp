// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/FileScorer.h"

#include "Services/FileKind.h"
#include "Services/NameSimilarity.h"
#include "Utilities/FileTypeHelper.h"
#include "Utilities/Text.h"

#include <algorithm>

namespace dugwise {

using MatchReason = SearchResult::MatchReason;

namespace {

/// What each kind of evidence is worth.
namespace Points {
constexpr double kVariantInName = 10;
constexpr double kVariantInFolder = 3;
constexpr double kVariantInText = 5;
constexpr double kSimilarName = 6; // times the similarity
constexpr double kPhraseInText = 12;
constexpr double kPhraseInName = 15;
constexpr double kModifiedInRange = 8;
constexpr double kDownloadedInRange = 10;
constexpr double kLastUsedInRange = 6;
constexpr double kWantedKind = 6;
constexpr double kWantedScreenshot = 8;
constexpr double kSemantic = 15; // times the score
constexpr double kDownloadSource = 5;
constexpr double kModifiedThisWeek = 2;
constexpr double kModifiedThisMonth = 1;
constexpr double kUsedInThreeDays = 3;
constexpr double kUsedThisWeek = 1.5;
} // namespace Points

constexpr double kPhraseShare = 0.7;

void earn(FileScore &score, double points, MatchReason reason)
{
    score.points += points;
    if (!score.reasons.contains(reason))
        score.reasons.append(reason);
}

double ageInDays(Instant date, Instant now)
{
    return (now.seconds - date.seconds) / 86'400;
}

} // namespace

struct FileScorer::Haystacks
{
    explicit Haystacks(std::size_t literals)
        : inName(literals)
        , inFolder(literals)
        , inText(literals)
        , inSource(literals)
    {}

    QString extension; ///< the one that `kind` belongs to
    FileType kind = FileType::other;
    std::string name;
    QString folderPath; ///< the one that `folder` belongs to
    std::string folder;
    FoundLiterals inName;
    FoundLiterals inFolder;
    FoundLiterals inText;
    FoundLiterals inSource;
};

FileScorer::FileScorer(SearchTerms terms, QHash<QString, double> semanticScores, Instant now)
    : m_terms(std::move(terms))
    , m_semanticScores(std::move(semanticScores))
    , m_now(now)
{
    QHash<QString, std::size_t> numbers;
    std::vector<std::string> distinct;
    for (const QString &keyword : std::as_const(m_terms.keywords)) {
        if (!numbers.contains(keyword)) {
            numbers.insert(keyword, distinct.size());
            distinct.push_back(keyword.toStdString());
        }
        m_keywords.push_back({numbers.value(keyword), variants(keyword)});
    }
    for (const QString &text : std::as_const(m_terms.phrases)) {
        Phrase phrase{literal(text), {}};
        for (const QString &word : lowerCased(text).split(u' ', Qt::SkipEmptyParts))
            phrase.words.push_back(variants(word));
        m_phrases.push_back(std::move(phrase));
    }
    m_matcher = std::make_unique<LiteralMatcher>(m_literals);
    m_similarity = std::make_unique<NameSimilarity>(distinct);
    m_haystacks = std::make_unique<Haystacks>(m_literals.literals().size());
}

FileScorer::~FileScorer() = default;

std::size_t FileScorer::literal(const QString &text)
{
    return m_literals.add(text.toStdString());
}

std::vector<std::size_t> FileScorer::variants(const QString &word)
{
    std::vector<std::size_t> numbers;
    for (const QString &variant : stemVariants(word))
        numbers.push_back(literal(variant));
    return numbers;
}

FileScore FileScorer::score(const IndexedFile &file)
{
    lookInto(file);
    FileScore score;
    scoreKeywords(score);
    scorePhrases(score);
    scoreFacts(file, score);
    scoreDownloadSource(file, score);
    scoreRecency(file, score);
    return score;
}

void FileScorer::lookInto(const IndexedFile &file)
{
    Haystacks &in = *m_haystacks;
    if (in.extension != file->fileExtension) {
        in.extension = file->fileExtension;
        in.kind = FileTypeHelper::fileType(file->fileExtension);
    }
    in.name = lowerCased(view(file->name.toUtf8()));
    m_matcher->scan(in.name, in.inName);
    if (in.folderPath != file->folderPath) {
        in.folderPath = file->folderPath;
        in.folder = lowerCased(view(file->folderPath.toUtf8()));
        m_matcher->scan(in.folder, in.inFolder);
    }
    m_matcher->scan(file->extractedText ? view(file->extractedText->lowered()) : std::string_view(),
                    in.inText);
}

void FileScorer::scoreKeywords(FileScore &score)
{
    const Haystacks &in = *m_haystacks;
    const std::vector<double> &similarities = m_similarity->best(in.name);
    for (const Keyword &keyword : m_keywords) {
        for (const std::size_t variant : keyword.variants) {
            if (in.inName.contains(variant))
                earn(score, Points::kVariantInName, MatchReason::filename);
            if (in.inFolder.contains(variant))
                earn(score, Points::kVariantInFolder, MatchReason::folder);
            if (in.inText.contains(variant))
                earn(score, Points::kVariantInText, MatchReason::content);
        }
        const double similarity = similarities[keyword.number];
        if (similarity > NameSimilarity::kThreshold)
            earn(score, Points::kSimilarName * similarity, MatchReason::filename);
    }
}

void FileScorer::scorePhrases(FileScore &score) const
{
    for (const Phrase &phrase : m_phrases) {
        if (phraseMatch(phrase, m_haystacks->inText))
            earn(score, Points::kPhraseInText, MatchReason::content);
        if (phraseMatch(phrase, m_haystacks->inName))
            earn(score, Points::kPhraseInName, MatchReason::filename);
    }
}

bool FileScorer::phraseMatch(const Phrase &phrase, const FoundLiterals &found)
{
    if (found.contains(phrase.whole))
        return true;
    if (phrase.words.size() < 2)
        return false;
    const auto matches = std::ranges::count_if(phrase.words, [&](const auto &variants) {
        return std::ranges::any_of(variants, [&](std::size_t v) { return found.contains(v); });
    });
    return static_cast<double>(matches) / static_cast<double>(phrase.words.size()) >= kPhraseShare;
}

void FileScorer::scoreFacts(const IndexedFile &file, FileScore &score) const
{
    if (m_terms.dateRange) {
        const auto isWithin = [&](const std::optional<Instant> &date) {
            return date && m_terms.dateRange->contains(*date);
        };
        if (isWithin(file->modifiedDate))
            earn(score, Points::kModifiedInRange, MatchReason::recency);
        if (isWithin(file->downloadDate))
            earn(score, Points::kDownloadedInRange, MatchReason::download);
        if (isWithin(file->lastUsedDate))
            earn(score, Points::kLastUsedInRange, MatchReason::lastUsed);
    }
    const FileNames names{m_haystacks->name, m_haystacks->folder};
    if (m_terms.fileType && matchesFileType(m_haystacks->kind, names, *m_terms.fileType))
        earn(score, Points::kWantedKind, MatchReason::fileType);
    if (m_terms.includeScreenshots && isLikelyScreenshot(m_haystacks->kind, names))
        earn(score, Points::kWantedScreenshot, MatchReason::fileType);
    const double semantic = m_semanticScores.isEmpty() ? 0 : m_semanticScores.value(file->path);
    if (semantic > kSemanticThreshold)
        earn(score, Points::kSemantic * semantic, MatchReason::semantic);
}

void FileScorer::scoreDownloadSource(const IndexedFile &file, FileScore &score)
{
    if (!file->downloadSource)
        return;
    m_matcher->scan(lowerCased(view(file->downloadSource->toUtf8())), m_haystacks->inSource);
    for (const Keyword &keyword : m_keywords) {
        if (m_haystacks->inSource.contains(keyword.variants.front()))
            earn(score, Points::kDownloadSource, MatchReason::download);
    }
}

void FileScorer::scoreRecency(const IndexedFile &file, FileScore &score) const
{
    const double age = ageInDays(file->modifiedDate, m_now);
    if (age < 7)
        score.points += Points::kModifiedThisWeek;
    else if (age < 30)
        score.points += Points::kModifiedThisMonth;
    if (!file->lastUsedDate)
        return;
    const double sinceUse = ageInDays(*file->lastUsedDate, m_now);
    if (sinceUse < 3)
        score.points += Points::kUsedInThreeDays;
    else if (sinceUse < 7)
        score.points += Points::kUsedThisWeek;
}

} // namespace dugwise
