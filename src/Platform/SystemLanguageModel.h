// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/GenerationSchema.h"
#include "Utilities/Outcome.h"

#include <QCoroTask>

#include <optional>

namespace dugwise {

/// One request to a language model, which knows of no other.
struct LanguageModelRequest
{
    QString instructions;
    QString prompt;
    std::optional<GenerationSchema> schema; ///< none: plain text is asked for
};

/// The language model of this machine. Lives on the UI thread.
class SystemLanguageModel
{
public:
    SystemLanguageModel() = default;
    Q_DISABLE_COPY_MOVE(SystemLanguageModel)
    virtual ~SystemLanguageModel() = default;

    /// Whether requests can be served, as far as is known; never blocks.
    [[nodiscard]] virtual bool isAvailable() = 0;
    /// Ends when isAvailable() is known for the first time; takes a second at most.
    [[nodiscard]] virtual QCoro::Task<void> firstAnswer() = 0;
    /// For people: which model it is and where, or why there is none.
    [[nodiscard]] virtual QString description() const = 0;

    /// The text that the model generates. Requests may overlap, and answers come in any order.
    [[nodiscard]] virtual QCoro::Task<Outcome<QString>> respond(LanguageModelRequest request) = 0;
};

} // namespace dugwise
