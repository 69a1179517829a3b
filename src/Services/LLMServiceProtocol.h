// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/CrossAppResult.h"
#include "Models/Records/DocumentInsightsResult.h"
#include "Models/Records/ParsedSearchIntent.h"
#include "Models/Records/SearchResult.h"

#include <QCoroTask>

namespace dugwise {

/// The one interface through which the conversation asks a language model. No operation fails:
/// each has a value to fall back on. Confined to the UI thread.
class LLMServiceProtocol
{
public:
    LLMServiceProtocol() = default;
    Q_DISABLE_COPY_MOVE(LLMServiceProtocol)
    virtual ~LLMServiceProtocol() = default;

    /// The structured form of a request; absent when nothing could be understood.
    [[nodiscard]] virtual QCoro::Task<std::optional<ParsedSearchIntent>>
    parseQuery(QString query) = 0;

    /// The answer to show in the chat.
    [[nodiscard]] virtual QCoro::Task<QString> generateResponse(
        QString query, QList<SearchResult> results, QList<CrossAppResult> crossAppResults) = 0;

    /// What a document's text says; absent when nothing can be said.
    [[nodiscard]] virtual QCoro::Task<std::optional<DocumentInsightsResult>>
    generateInsights(QString text, QString fileName) = 0;

    /// The results in the order in which to show them.
    [[nodiscard]] virtual QCoro::Task<QList<SearchResult>>
    rerankResults(QString query, QList<SearchResult> results) = 0;

    [[nodiscard]] virtual bool isAvailable() const = 0;
    [[nodiscard]] virtual QString statusLabel() const = 0;
};

} // namespace dugwise
