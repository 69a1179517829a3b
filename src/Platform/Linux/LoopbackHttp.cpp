// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/LoopbackHttp.h"

#include <QCoroFuture>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QPromise>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

/// What is sent with a request. Refuses to be rewound, by which the network library would send a
/// request anew when a server closes the connection.
class SentOnce final : public QIODevice
{
public:
    SentOnce(QByteArray bytes, QObject *parent)
        : QIODevice(parent)
        , m_bytes(std::move(bytes))
    {
        QIODevice::open(ReadOnly | Unbuffered);
    }
    [[nodiscard]] qint64 size() const override { return m_bytes.size(); }
    bool reset() override { return false; }

protected:
    qint64 readData(char *data, qint64 most) override
    {
        const QByteArrayView rest = QByteArrayView(m_bytes).sliced(pos());
        const qint64 count = std::min<qint64>(most, rest.size());
        std::copy_n(rest.data(), count, data);
        return count;
    }
    qint64 writeData(const char * /*data*/, qint64 /*count*/) override { return -1; }

private:
    QByteArray m_bytes;
};

/// One request and its answer, with a connection that no other shares. Deletes itself when done.
class Exchange final : public QObject
{
public:
    Exchange(const LoopbackServer &server, const QString &path, QObject *parent)
        : QObject(parent)
    {
        m_promise.start();
        QUrl url = server.base;
        m_request.setRawHeader("Host", url.authority(QUrl::FullyEncoded).toLatin1());
        url.setHost(server.address.toString());
        url.setPath(url.path() + path);
        m_request.setUrl(url);
        m_request.setHeader(QNetworkRequest::UserAgentHeader, u"Dugwise"_s);
        m_request.setRawHeader("Connection", "close");
        m_request.setRawHeader("Accept-Encoding", "identity"); // nothing is unpacked
        m_request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
        m_request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                               QNetworkRequest::ManualRedirectPolicy);
        m_network.setProxy(QNetworkProxy::NoProxy);
    }
    Q_DISABLE_COPY_MOVE(Exchange)
    ~Exchange() override
    {
        if (!m_isDone)
            finish(Failure{u"given up"_s});
    }

    [[nodiscard]] QFuture<Outcome<QByteArray>> answer() { return m_promise.future(); }

    void get(std::chrono::milliseconds timeout) { await(m_network.get(m_request), timeout); }
    void post(const QByteArray &json, std::chrono::milliseconds timeout)
    {
        m_request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);
        await(m_network.post(m_request, new SentOnce(json, this)), timeout);
    }

private:
    void await(QNetworkReply *reply, std::chrono::milliseconds timeout)
    {
        reply->setReadBufferSize(LoopbackHttp::kMostBytes);
        connect(reply, &QNetworkReply::readyRead, this, [this, reply] { read(*reply); });
        connect(reply, &QNetworkReply::finished, this, [this, reply] {
            read(*reply);
            conclude(*reply);
        });
        QTimer::singleShot(timeout, this, [this] { finish(Failure{u"no answer in time"_s}); });
    }

    void read(QNetworkReply &reply)
    {
        m_body += reply.read(LoopbackHttp::kMostBytes + 1 - m_body.size());
        if (m_body.size() > LoopbackHttp::kMostBytes)
            finish(Failure{u"the answer is too long"_s});
    }

    void conclude(const QNetworkReply &reply)
    {
        const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (reply.error() != QNetworkReply::NoError)
            finish(Failure{reply.errorString()});
        else if (status < 200 || status > 299)
            finish(Failure{u"the server answered with status %1"_s.arg(status)});
        else
            finish(m_body);
    }

    void finish(const Outcome<QByteArray> &outcome)
    {
        if (m_isDone)
            return;
        m_isDone = true;
        m_promise.addResult(outcome);
        m_promise.finish();
        deleteLater();
    }

    QNetworkAccessManager m_network;
    QNetworkRequest m_request;
    QByteArray m_body;
    QPromise<Outcome<QByteArray>> m_promise;
    bool m_isDone = false;
};

} // namespace

QCoro::Task<Outcome<QByteArray>>
LoopbackHttp::get(LoopbackServer server, QString path, std::chrono::milliseconds timeout)
{
    auto *const exchange = new Exchange(server, path, &m_exchanges);
    exchange->get(timeout);
    const QFuture<Outcome<QByteArray>> answer = exchange->answer();
    const Outcome<QByteArray> outcome = co_await answer;
    co_return outcome;
}

QCoro::Task<Outcome<QByteArray>> LoopbackHttp::post(LoopbackServer server,
                                                    QString path,
                                                    QByteArray json,
                                                    std::chrono::milliseconds timeout)
{
    auto *const exchange = new Exchange(server, path, &m_exchanges);
    exchange->post(json, timeout);
    const QFuture<Outcome<QByteArray>> answer = exchange->answer();
    const Outcome<QByteArray> outcome = co_await answer;
    co_return outcome;
}

} // namespace dugwise
