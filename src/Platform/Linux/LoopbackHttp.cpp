// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/LoopbackHttp.h"

#include <QCoroFuture>
#include <QtConcurrentRun>

#include <event2/buffer.h>
#include <event2/event.h>
#include <event2/http.h>
#include <event2/thread.h>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

/// Longest headers that are taken, in bytes.
constexpr ev_ssize_t kMostHeaderBytes = ev_ssize_t{64} * 1024;

constexpr int kHttpPort = 80;

/// How many exchanges may be under way; more of them wait.
constexpr int kMostExchanges = 32;

struct Request
{
    LoopbackServer server;
    QString path;
    std::optional<QByteArray> json; ///< none: a GET
    std::chrono::milliseconds timeout{};
};

template <auto Free>
struct Freeing
{
    template <typename T>
    void operator()(T *object) const
    {
        Free(object);
    }
};
using EventBase = std::unique_ptr<event_base, Freeing<event_base_free>>;
using Connection = std::unique_ptr<evhttp_connection, Freeing<evhttp_connection_free>>;

/// An exchange under way, as its call-backs know it.
struct Running
{
    event_base *base = nullptr;
    Outcome<QByteArray> outcome = Failure{u"there was no answer"_s};
};

/// Called at the end of an exchange, whatever its outcome; without an answer where there was none.
void conclude(evhttp_request *answer, void *context)
{
    auto &running = *static_cast<Running *>(context);
    // Unlike a break, an exit that comes before the loop is not forgotten: some connections fail
    // while they are made.
    event_base_loopexit(running.base, nullptr);
    const int status = answer ? evhttp_request_get_response_code(answer) : 0;
    if (status == 0)
        return;
    if (status < 200 || status > 299) {
        running.outcome = Failure{u"the server answered with status %1"_s.arg(status)};
        return;
    }
    evbuffer *const buffer = evhttp_request_get_input_buffer(answer);
    QByteArray body(static_cast<qsizetype>(evbuffer_get_length(buffer)), Qt::Uninitialized);
    evbuffer_remove(buffer, body.data(), static_cast<std::size_t>(body.size()));
    running.outcome = body;
}

void fail(evhttp_request_error /*error*/, void *context)
{
    auto &running = *static_cast<Running *>(context);
    running.outcome = Failure{u"the answer was cut off, malformed or too long"_s};
}

/// Hands the request to the connection, which owns it from then on.
bool start(evhttp_connection *connection, const Request &request, Running &running)
{
    evhttp_request *const sent = evhttp_request_new(conclude, &running);
    if (!sent)
        return false;
    evhttp_request_set_error_cb(sent, fail);
    evkeyvalq *const headers = evhttp_request_get_output_headers(sent);
    const QByteArray host = request.server.base.authority(QUrl::FullyEncoded).toLatin1();
    evhttp_add_header(headers, "Host", host.constData());
    evhttp_add_header(headers, "Connection", "close");
    evhttp_add_header(headers, "User-Agent", "Dugwise");
    evhttp_add_header(headers, "Accept", "application/json");
    if (request.json) {
        evhttp_add_header(headers, "Content-Type", "application/json");
        evbuffer_add(evhttp_request_get_output_buffer(sent),
                     request.json->constData(),
                     static_cast<std::size_t>(request.json->size()));
    }
    const QByteArray path =
        (request.server.base.path(QUrl::FullyEncoded) + request.path).toLatin1();
    return evhttp_make_request(
               connection, sent, request.json ? EVHTTP_REQ_POST : EVHTTP_REQ_GET, path.constData())
           == 0;
}

timeval toTimeval(std::chrono::milliseconds duration)
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(duration);
    const std::chrono::microseconds rest = duration - seconds;
    return {seconds.count(), rest.count()};
}

/// A stop comes from another thread, and nothing is told of what fails.
bool prepareLibrary()
{
    event_set_log_callback([](int, const char *) {});
    return evthread_use_pthreads() == 0;
}

/// For this thread alone: a server may hang up while it is written to.
void blockBrokenPipeSignal()
{
    sigset_t brokenPipe = {};
    ::sigemptyset(&brokenPipe);
    ::sigaddset(&brokenPipe, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
}

/// Runs on a worker.
Outcome<QByteArray> exchange(const Request &request, const std::stop_token &stop)
{
    static const bool kIsReady = prepareLibrary();
    blockBrokenPipeSignal();
    const EventBase base(event_base_new());
    const QByteArray address = request.server.address.toLatin1();
    const int port = request.server.base.port(kHttpPort);
    const Connection connection(evhttp_connection_base_new(
        base.get(), nullptr, address.constData(), static_cast<ev_uint16_t>(port)));
    if (!kIsReady || !base || !connection)
        return Failure{u"no connection can be made"_s};
    evhttp_connection_set_max_headers_size(connection.get(), kMostHeaderBytes);
    evhttp_connection_set_max_body_size(connection.get(), LoopbackHttp::kMostBytes);
    evhttp_connection_set_retries(connection.get(), 0);

    Running running{base.get()};
    const timeval timeout = toTimeval(request.timeout);
    evhttp_connection_set_timeout_tv(connection.get(), &timeout); // else it has limits of its own
    event_base_loopexit(base.get(), &timeout);
    if (!start(connection.get(), request, running))
        return Failure{u"nobody answers"_s};
    const std::stop_callback stopping(stop, [&] { event_base_loopexit(base.get(), nullptr); });
    event_base_dispatch(base.get());
    return running.outcome;
}

} // namespace

LoopbackHttp::LoopbackHttp()
{
    m_workers.setMaxThreadCount(kMostExchanges);
}

LoopbackHttp::~LoopbackHttp()
{
    m_stop.request_stop();
    m_workers.waitForDone();
}

QCoro::Task<Outcome<QByteArray>>
LoopbackHttp::get(LoopbackServer server, QString path, std::chrono::milliseconds timeout)
{
    const Request request{server, path, std::nullopt, timeout};
    const QFuture<Outcome<QByteArray>> answer =
        QtConcurrent::run(&m_workers, exchange, request, m_stop.get_token());
    const Outcome<QByteArray> outcome = co_await answer;
    co_return outcome;
}

QCoro::Task<Outcome<QByteArray>> LoopbackHttp::post(LoopbackServer server,
                                                    QString path,
                                                    QByteArray json,
                                                    std::chrono::milliseconds timeout)
{
    const Request request{server, path, json, timeout};
    const QFuture<Outcome<QByteArray>> answer =
        QtConcurrent::run(&m_workers, exchange, request, m_stop.get_token());
    const Outcome<QByteArray> outcome = co_await answer;
    co_return outcome;
}

} // namespace dugwise
