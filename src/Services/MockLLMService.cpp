// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/MockLLMService.h"

#include "Utilities/Formatters.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

QString fileSentence(const QList<SearchResult> &results)
{
    QStringList labels;
    for (const SearchResult &result : results) {
        for (const SearchResult::MatchReason reason : result.matchReasons)
            labels.append(rawValue(reason).toLower());
    }
    labels.removeDuplicates();
    std::ranges::sort(labels);
    return u"I found %1 matching your search, ranked by %2. Say \"open #1\" to open a file or "
           "\"tell me about #2\" for a summary."_s.arg(counted(results.size(), u"file"_s),
                                                       labels.join(u", "_s));
}

QString crossAppSentence(const QList<CrossAppResult> &results)
{
    QStringList phrases;
    for (const CrossAppSource source : kAllCrossAppSources) {
        const auto count = std::ranges::count(results, source, &CrossAppResult::source);
        if (count > 0)
            phrases.append(counted(count, rawValue(source).toLower()));
    }
    return u"I also found %1 related to your search."_s.arg(phrases.join(u" and "_s));
}

} // namespace

QCoro::Task<std::optional<ParsedSearchIntent>> MockLLMService::parseQuery(QString /*query*/)
{
    co_return std::nullopt;
}

QCoro::Task<QString> MockLLMService::generateResponse(QString /*query*/,
                                                      QList<SearchResult> results,
                                                      QList<CrossAppResult> crossAppResults)
{
    QStringList sentences;
    if (!results.isEmpty())
        sentences.append(fileSentence(results));
    if (!crossAppResults.isEmpty())
        sentences.append(crossAppSentence(crossAppResults));
    if (sentences.isEmpty()) {
        sentences.append(u"I searched your Mac but couldn't find a match for that. Try describing "
                         "the file a different way — like when you last opened it, what type it "
                         "was, or what was in it."_s);
    }
    co_return sentences.join(u' ');
}

QCoro::Task<std::optional<DocumentInsightsResult>>
MockLLMService::generateInsights(QString /*text*/, QString /*fileName*/)
{
    co_return std::nullopt;
}

QCoro::Task<QList<SearchResult>> MockLLMService::rerankResults(QString /*query*/,
                                                               QList<SearchResult> results)
{
    co_return results;
}

bool MockLLMService::isAvailable() const
{
    return false;
}

QString MockLLMService::statusLabel() const
{
    return u"Keyword Search"_s;
}

} // namespace dugwise
