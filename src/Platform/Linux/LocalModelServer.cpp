// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/LocalModelServer.h"

#include "Platform/ChatCompletion.h"

#include <QCoroFuture>
#include <QPointer>
#include <QtConcurrentRun>

#include <array>
#include <cmath>
#include <vector>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace dugwise {

namespace {

constexpr std::chrono::milliseconds kProbeTimeout = 1s;
constexpr std::chrono::milliseconds kProbeAge = 2s;

/// Where the usual servers listen, by their own defaults: llama.cpp's, Ollama, LM Studio.
constexpr std::array kUsualPorts{8080, 11434, 1234};

QList<LoopbackServer> usualServers()
{
    QList<LoopbackServer> servers;
    for (const int port : kUsualPorts) {
        servers.append({QUrl(u"http://127.0.0.1:%1/v1"_s.arg(port)), u"127.0.0.1"_s});
    }
    return servers;
}

} // namespace

LocalModelServer::Settings LocalModelServer::Settings::ofEnvironment()
{
    Settings settings{.url = qEnvironmentVariable("DUGWISE_MODEL_URL").trimmed(),
                      .model = qEnvironmentVariable("DUGWISE_MODEL_NAME").trimmed()};
    const double seconds = qEnvironmentVariable("DUGWISE_MODEL_TIMEOUT").toDouble();
    constexpr double kMostSeconds = 24 * 60 * 60;
    if (seconds > 0 && seconds <= kMostSeconds)
        settings.timeout = std::chrono::milliseconds(std::lround(seconds * 1000));
    return settings;
}

LocalModelServer::LocalModelServer(Settings settings)
    : m_settings(std::move(settings))
{
    m_firstProbe.start();
    if (m_settings.url.isEmpty()) {
        m_servers = usualServers();
    } else if (const auto servers = loopbackServers(m_settings.url)) {
        m_servers = *servers;
    } else {
        m_refusal = servers.error();
        m_firstProbe.finish();
    }
}

LocalModelServer::~LocalModelServer()
{
    if (!m_firstProbe.future().isFinished())
        m_firstProbe.finish();
}

bool LocalModelServer::isAvailable()
{
    const bool isOld = !m_sinceProbe.isValid() || m_sinceProbe.hasExpired(kProbeAge.count());
    if (isOld && !m_isProbing && !m_servers.isEmpty())
        probe();
    return m_found.has_value();
}

QCoro::Task<void> LocalModelServer::firstAnswer()
{
    const QFuture<void> known = m_firstProbe.future();
    if (!known.isFinished() && !m_isProbing)
        probe();
    co_await known;
}

QString LocalModelServer::description() const
{
    if (m_found) {
        return u"%1 at %2"_s.arg(m_found->model, m_found->server.base.toDisplayString());
    }
    if (!m_refusal.isEmpty())
        return m_refusal;
    QStringList addresses;
    for (const LoopbackServer &server : m_servers)
        addresses.append(server.base.toDisplayString());
    addresses.removeDuplicates();
    return u"no model server answers at "_s + addresses.join(u", "_s);
}

QCoro::Task<Outcome<QString>> LocalModelServer::respond(LanguageModelRequest request)
{
    if (!m_found)
        co_return Failure{u"there is no model server"_s};
    const QByteArray body = ChatCompletion::requestBody(m_found->model, request);
    QCoro::Task<Outcome<QByteArray>> exchange =
        m_http.post(m_found->server, u"/chat/completions"_s, body, m_settings.timeout);
    const Outcome<QByteArray> answer = co_await exchange;
    if (!answer)
        co_return Failure{answer.error()};
    const QFuture<Outcome<QString>> reading =
        QtConcurrent::run(ChatCompletion::answerText, *answer);
    const Outcome<QString> text = co_await reading;
    co_return text;
}

std::optional<LocalModelServer::Found> LocalModelServer::found(const LoopbackServer &server,
                                                               const QStringList &names) const
{
    if (names.isEmpty())
        return std::nullopt;
    return Found{server, m_settings.model.isEmpty() ? names.first() : m_settings.model};
}

/// Asks all servers at once and takes the first in order that has a model.
QCoro::Task<void> LocalModelServer::probe()
{
    const QPointer<LocalModelServer> self(this);
    m_isProbing = true;
    const QList<LoopbackServer> servers = m_servers;
    std::vector<QCoro::Task<Outcome<QByteArray>>> exchanges;
    for (const LoopbackServer &server : servers)
        exchanges.push_back(m_http.get(server, u"/models"_s, kProbeTimeout));
    std::optional<Found> answering;
    for (std::size_t i = 0; i < exchanges.size() && !answering; ++i) {
        QCoro::Task<Outcome<QByteArray>> &exchange = exchanges[i];
        const Outcome<QByteArray> models = co_await exchange;
        if (!self)
            co_return;
        if (!models)
            continue;
        const QFuture<QStringList> reading = QtConcurrent::run(ChatCompletion::modelNames, *models);
        const QStringList names = co_await reading;
        if (!self)
            co_return;
        answering = found(servers[static_cast<qsizetype>(i)], names);
    }
    m_found = answering;
    m_isProbing = false;
    m_sinceProbe.start();
    if (!m_firstProbe.future().isFinished())
        m_firstProbe.finish();
}

} // namespace dugwise
