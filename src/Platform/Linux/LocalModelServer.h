// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/LoopbackHttp.h"
#include "Platform/SystemLanguageModel.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPromise>

#include <chrono>

namespace dugwise {

/// A model server on this machine that speaks the chat-completions interface. Which one there is is
/// found out anew while it is asked for.
class LocalModelServer final : public QObject, public SystemLanguageModel
{
public:
    struct Settings
    {
        QString url;   ///< empty: the usual addresses are tried
        QString model; ///< empty: the first that the server lists
        std::chrono::milliseconds timeout = std::chrono::seconds(120); ///< of one request

        /// As DUGWISE_MODEL_URL, DUGWISE_MODEL_NAME and DUGWISE_MODEL_TIMEOUT (seconds) say.
        [[nodiscard]] static Settings ofEnvironment();
    };

    explicit LocalModelServer(Settings settings);
    Q_DISABLE_COPY_MOVE(LocalModelServer)
    ~LocalModelServer() override;

    /// Looks for the server again when the answer is older than two seconds.
    [[nodiscard]] bool isAvailable() override;
    [[nodiscard]] QCoro::Task<void> firstAnswer() override;
    [[nodiscard]] QString description() const override;
    [[nodiscard]] QCoro::Task<Outcome<QString>> respond(LanguageModelRequest request) override;

private:
    /// A server that answers, and the model to ask.
    struct Found
    {
        LoopbackServer server;
        QString model;
    };

    /// The server, unless it lists no models.
    [[nodiscard]] std::optional<Found> found(const LoopbackServer &server,
                                             const QStringList &names) const;
    QCoro::Task<void> probe();

    Settings m_settings;
    QList<LoopbackServer> m_servers; ///< where to look, in order
    QString m_refusal;               ///< why the address is not used
    LoopbackHttp m_http;
    std::optional<Found> m_found;
    QElapsedTimer m_sinceProbe; ///< invalid before the first
    bool m_isProbing = false;
    QPromise<void> m_firstProbe;
};

} // namespace dugwise
