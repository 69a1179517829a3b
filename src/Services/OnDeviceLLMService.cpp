// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/OnDeviceLLMService.h"

#include "Platform/LanguageModelSession.h"
#include "Services/DocumentInsightsGenerable.h"
#include "Services/LanguageModelPrompts.h"
#include "Services/RerankGenerable.h"
#include "Services/SearchIntentGenerable.h"
#include "Utilities/LocalTime.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

using DateRange = DateIntentParser::DateRange;

constexpr qsizetype kMostCandidates = 10;

std::optional<FileType> mapFileCategory(SearchFileCategory category)
{
    switch (category) {
    case SearchFileCategory::pdf:
        return FileType::pdf;
    case SearchFileCategory::image:
        return FileType::image;
    case SearchFileCategory::screenshot:
        return FileType::screenshot;
    case SearchFileCategory::document:
        return FileType::document;
    case SearchFileCategory::presentation:
        return FileType::presentation;
    case SearchFileCategory::spreadsheet:
        return FileType::spreadsheet;
    case SearchFileCategory::code:
        return FileType::code;
    case SearchFileCategory::text:
        return FileType::text;
    case SearchFileCategory::any:
        break;
    }
    return std::nullopt;
}

std::optional<DateRange> mapRecency(SearchRecency recency, Instant now)
{
    const QDate today = localTime(now).date();
    switch (recency) {
    case SearchRecency::today:
        return DateRange{startOfDay(today), now};
    case SearchRecency::yesterday:
        return DateRange{startOfDay(today.addDays(-1)), startOfDay(today)};
    case SearchRecency::lastWeek:
        return DateRange{calendarTimeBefore(now, {.days = 7}), now};
    case SearchRecency::coupleWeeks:
    case SearchRecency::recently:
        return DateRange{calendarTimeBefore(now, {.days = 14}), now};
    case SearchRecency::fewWeeks:
        return DateRange{calendarTimeBefore(now, {.days = 21}), now};
    case SearchRecency::lastMonth:
        return DateRange{calendarTimeBefore(now, {.months = 1}), now};
    case SearchRecency::fewMonths:
        return DateRange{calendarTimeBefore(now, {.months = 3}), now};
    case SearchRecency::anyTime:
        break;
    }
    return std::nullopt;
}

ParsedSearchIntent toIntent(const SearchIntentGenerable &generated, Instant now)
{
    return {
        .keywords = generated.keywords,
        .phrases = generated.phrases,
        .fileType = mapFileCategory(generated.fileCategory),
        .includeScreenshots = generated.fileCategory == SearchFileCategory::screenshot,
        .dateRange = mapRecency(generated.recency, now),
        .personNames = generated.personNames,
        .wantsCrossApp = generated.searchScope != SearchScopeGenerable::filesOnly,
    };
}

/// The first `count` results in a wanted order, which may name each of them, none or others; those
/// that it leaves out come next, and then the rest.
QList<SearchResult>
merged(const QList<SearchResult> &results, qsizetype count, const QList<qint64> &wanted)
{
    QList<qsizetype> order;
    for (const qint64 index : wanted) {
        if (index >= 0 && index < count && !order.contains(index))
            order.append(index);
    }
    for (qsizetype index = 0; index < results.size(); ++index) {
        if (!order.contains(index))
            order.append(index);
    }
    QList<SearchResult> ranked;
    for (const qsizetype index : order)
        ranked.append(results[index]);
    return ranked;
}

} // namespace

OnDeviceLLMService::OnDeviceLLMService(SystemLanguageModel *model,
                                       std::unique_ptr<MockLLMService> fallback,
                                       Clock clock)
    : m_model(model)
    , m_fallback(std::move(fallback))
    , m_clock(clock)
{}

QCoro::Task<std::optional<ParsedSearchIntent>> OnDeviceLLMService::parseQuery(QString query)
{
    if (!isAvailable())
        co_return std::nullopt;
    const Clock clock = m_clock;
    const LanguageModelSession session(*m_model, LanguageModelPrompts::queryParserInstructions());
    const Outcome<SearchIntentGenerable> generated =
        co_await session.respond<SearchIntentGenerable>(query);
    if (!generated)
        co_return std::nullopt;
    co_return toIntent(*generated, clock.now());
}

QCoro::Task<QString> OnDeviceLLMService::generateResponse(QString query,
                                                          QList<SearchResult> results,
                                                          QList<CrossAppResult> crossAppResults)
{
    const std::shared_ptr<MockLLMService> fallback = m_fallback;
    if (isAvailable()) {
        const LanguageModelSession session(*m_model,
                                           LanguageModelPrompts::answerWriterInstructions());
        const QString prompt =
            LanguageModelPrompts::answerPrompt(query, results, crossAppResults, m_clock.now());
        const Outcome<QString> text = co_await session.respond(prompt);
        if (text)
            co_return *text;
    }
    const QString text = co_await fallback->generateResponse(query, results, crossAppResults);
    co_return text;
}

QCoro::Task<std::optional<DocumentInsightsResult>>
OnDeviceLLMService::generateInsights(QString text, QString fileName)
{
    if (!isAvailable())
        co_return std::nullopt;
    const LanguageModelSession session(*m_model,
                                       LanguageModelPrompts::documentAnalystInstructions());
    const QString prompt = LanguageModelPrompts::insightsPrompt(text, fileName);
    const Outcome<DocumentInsightsGenerable> generated =
        co_await session.respond<DocumentInsightsGenerable>(prompt);
    if (!generated)
        co_return std::nullopt;
    const DocumentInsightsResult insights{
        .fileName = fileName,
        .summary = generated->summary,
        .keyPoints = generated->keyPoints,
        .documentType = generated->documentType,
        .entities = generated->entities,
    };
    co_return insights;
}

QCoro::Task<QList<SearchResult>> OnDeviceLLMService::rerankResults(QString query,
                                                                   QList<SearchResult> results)
{
    if (results.size() < 2 || !isAvailable())
        co_return results;
    const qsizetype count = std::min(results.size(), kMostCandidates);
    const LanguageModelSession session(*m_model, LanguageModelPrompts::resultRankerInstructions());
    const QString prompt =
        LanguageModelPrompts::rankingPrompt(query, results.first(count), m_clock.now());
    const Outcome<RerankGenerable> generated = co_await session.respond<RerankGenerable>(prompt);
    if (!generated)
        co_return results;
    co_return merged(results, count, generated->rankedIndices);
}

bool OnDeviceLLMService::isAvailable() const
{
    return m_model && m_model->isAvailable();
}

QString OnDeviceLLMService::statusLabel() const
{
    return isAvailable() ? u"AI: On-Device"_s : m_fallback->statusLabel();
}

} // namespace dugwise
