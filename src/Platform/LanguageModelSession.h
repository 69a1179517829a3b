// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Generable.h"
#include "Platform/SystemLanguageModel.h"

#include <QCoroFuture>
#include <QtConcurrentRun>

#include <utility>

namespace dugwise {

/// Asks a language model under fixed instructions. A session keeps nothing of what was asked. It
/// outlives its requests, and the model outlives it.
class LanguageModelSession
{
public:
    LanguageModelSession(SystemLanguageModel &model, QStringView instructions)
        : m_model(model)
        , m_instructions(instructions.toString())
    {}

    /// Plain text, as it was generated.
    [[nodiscard]] QCoro::Task<Outcome<QString>> respond(QString prompt) const
    {
        LanguageModelRequest request{m_instructions, std::move(prompt), std::nullopt};
        return m_model.respond(std::move(request));
    }

    /// A value of a type of Generable.h.
    template <typename T>
    [[nodiscard]] QCoro::Task<Outcome<T>> respond(QString prompt) const
    {
        const GenerationSchema schema = generationSchema<T>();
        LanguageModelRequest request{m_instructions, prompt, schema};
        QCoro::Task<Outcome<QString>> answer = m_model.respond(std::move(request));
        const Outcome<QString> text = co_await answer;
        if (!text)
            co_return Failure{text.error()};
        // What a model writes may be long.
        const QFuture<Outcome<GeneratedContent>> reading =
            QtConcurrent::run(readGeneratedContent, text->toUtf8(), schema);
        const Outcome<GeneratedContent> content = co_await reading;
        if (!content)
            co_return Failure{content.error()};
        co_return decoded<T>(*content);
    }

private:
    SystemLanguageModel &m_model;
    QString m_instructions;
};

} // namespace dugwise
