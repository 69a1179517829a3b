// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/LLMServiceProtocol.h"

namespace dugwise {

/// What answers when there is no language model: it understands nothing, keeps every order, and
/// writes its answers from fixed sentences.
class MockLLMService final : public LLMServiceProtocol
{
public:
    [[nodiscard]] QCoro::Task<std::optional<ParsedSearchIntent>> parseQuery(QString query) override;
    [[nodiscard]] QCoro::Task<QString> generateResponse(
        QString query, QList<SearchResult> results, QList<CrossAppResult> crossAppResults) override;
    [[nodiscard]] QCoro::Task<std::optional<DocumentInsightsResult>>
    generateInsights(QString text, QString fileName) override;
    [[nodiscard]] QCoro::Task<QList<SearchResult>>
    rerankResults(QString query, QList<SearchResult> results) override;
    [[nodiscard]] bool isAvailable() const override;
    [[nodiscard]] QString statusLabel() const override;
};

} // namespace dugwise
