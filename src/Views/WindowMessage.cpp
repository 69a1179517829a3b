// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/WindowMessage.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr auto kRequestKey = "request"_L1;
constexpr auto kActivationTokenKey = "activationToken"_L1;

} // namespace

QByteArray WindowMessage::toLine() const
{
    const QJsonObject json{
        {kRequestKey, request.left(kLongestRequest)},
        {kActivationTokenKey, activationToken.left(kLongestToken)},
    };
    return QJsonDocument(json).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<WindowMessage> WindowMessage::fromLine(const QByteArray &line)
{
    const QJsonObject json = QJsonDocument::fromJson(line).object();
    const QJsonValue request = json[kRequestKey];
    const QJsonValue activationToken = json[kActivationTokenKey];
    if (!request.isString() || !activationToken.isString())
        return std::nullopt;
    return WindowMessage{request.toString(), activationToken.toString()};
}

} // namespace dugwise
