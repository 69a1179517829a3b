// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/SystemLanguageModel.h"

/// The bodies of the chat-completions interface, which the usual model servers share
/// (GET models, POST chat/completions).
namespace dugwise::ChatCompletion {

/// The ids of the models that a server lists; none for what is no such list.
[[nodiscard]] QStringList modelNames(const QByteArray &body);

/// The request to one model, as JSON.
[[nodiscard]] QByteArray requestBody(const QString &model, const LanguageModelRequest &request);

/// The text in a server's answer. Fails when there is none and when the model was cut short.
[[nodiscard]] Outcome<QString> answerText(const QByteArray &body);

} // namespace dugwise::ChatCompletion
