// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/MockLLMService.h"
#include "Utilities/Clock.h"

#include <memory>

namespace dugwise {

class SystemLanguageModel;

/// Asks the language model of this machine, each time in a session of its own, and the fallback
/// where it cannot be asked or does not answer.
class OnDeviceLLMService final : public LLMServiceProtocol
{
public:
    /// Null: there is no model. The model outlives the service.
    OnDeviceLLMService(SystemLanguageModel *model,
                       std::unique_ptr<MockLLMService> fallback,
                       Clock clock);

    [[nodiscard]] QCoro::Task<std::optional<ParsedSearchIntent>> parseQuery(QString query) override;
    [[nodiscard]] QCoro::Task<QString> generateResponse(
        QString query, QList<SearchResult> results, QList<CrossAppResult> crossAppResults) override;
    [[nodiscard]] QCoro::Task<std::optional<DocumentInsightsResult>>
    generateInsights(QString text, QString fileName) override;
    /// Changes the order of the first ten at most.
    [[nodiscard]] QCoro::Task<QList<SearchResult>>
    rerankResults(QString query, QList<SearchResult> results) override;
    [[nodiscard]] bool isAvailable() const override;
    [[nodiscard]] QString statusLabel() const override;

private:
    SystemLanguageModel *m_model;
    // Shared with the requests under way, which may end after the service.
    std::shared_ptr<MockLLMService> m_fallback;
    Clock m_clock;
};

} // namespace dugwise
