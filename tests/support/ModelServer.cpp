// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ModelServer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise::test {

namespace {

constexpr qsizetype kBlock = qsizetype{64} * 1024;
constexpr int kNotFound = 404;

QByteArray head(int status, const QByteArray &headers)
{
    return "HTTP/1.1 " + QByteArray::number(status)
           + " Status\r\nContent-Type: application/json\r\n" + headers + "\r\n";
}

QByteArray lengthHeader(qint64 length)
{
    return "Content-Length: " + QByteArray::number(length) + "\r\n";
}

QByteArray json(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace

Reply Reply::content(const QString &text, const QString &finishReason)
{
    const QJsonObject choice{
        {u"index"_s, 0},
        {u"message"_s, QJsonObject{{u"role"_s, u"assistant"_s}, {u"content"_s, text}}},
        {u"finish_reason"_s, finishReason},
    };
    return body(json({
        {u"id"_s, u"chatcmpl-1"_s},
        {u"object"_s, u"chat.completion"_s},
        {u"created"_s, 1'770'000'000},
        {u"model"_s, u"test-model"_s},
        {u"choices"_s, QJsonArray{choice}},
    }));
}

Reply Reply::body(const QByteArray &body, int status)
{
    return {.start = head(status, lengthHeader(body.size())) + body};
}

Reply Reply::redirect(int status, const QByteArray &location)
{
    return {.start = head(status, "Location: " + location + "\r\n" + lengthHeader(0))};
}

Reply Reply::chunked(const QByteArray &body, qsizetype size)
{
    QByteArray sent = head(200, "Transfer-Encoding: chunked\r\n");
    for (qsizetype at = 0; at < body.size(); at += size) {
        const QByteArray chunk = body.mid(at, size);
        sent += QByteArray::number(chunk.size(), 16) + "\r\n" + chunk + "\r\n";
    }
    return {.start = sent + "0\r\n\r\n"};
}

Reply Reply::cutOff(const QByteArray &body, qint64 missing)
{
    return {.start = head(200, lengthHeader(body.size() + missing)) + body, .closes = true};
}

Reply Reply::closed()
{
    return {.closes = true};
}

Reply Reply::silence()
{
    return {.isHeld = true};
}

Reply Reply::endlessHeaders()
{
    const QByteArray line = "X-Filler: " + QByteArray(52, 'x') + "\r\n";
    return {.start = "HTTP/1.1 200 OK\r\n",
            .filler = line.repeated(kBlock / line.size()),
            .fillerSize = kEndless};
}

Reply Reply::endlessHeaderLine()
{
    return {.start = "HTTP/1.1 200 OK\r\nX-Filler: ",
            .filler = QByteArray(kBlock, 'x'),
            .fillerSize = kEndless};
}

Reply Reply::large(qint64 size)
{
    return {.start = head(200, lengthHeader(size)),
            .filler = QByteArray(kBlock, ' '),
            .fillerSize = size};
}

Reply Reply::endlessBody()
{
    return {.start = head(200, "Connection: close\r\n"),
            .filler = QByteArray(kBlock, ' '),
            .fillerSize = kEndless};
}

Reply Reply::dripping(int milliseconds)
{
    Reply reply = large(1000);
    reply.pause = milliseconds;
    return reply;
}

Reply Reply::after(int milliseconds) const
{
    Reply reply = *this;
    reply.delay = milliseconds;
    return reply;
}

Reply Reply::held() const
{
    Reply reply = *this;
    reply.isHeld = true;
    return reply;
}

/// One client: takes its requests one by one, and ends with it.
class ModelServer::Connection : public QObject
{
public:
    Connection(ModelServer &server, QTcpSocket *socket)
        : m_server(server)
        , m_socket(socket)
    {
        m_socket->setParent(this);
        ++m_server.accepted;
        ++m_server.open;
        connect(m_socket, &QTcpSocket::readyRead, this, &Connection::read);
        connect(m_socket, &QTcpSocket::disconnected, this, &QObject::deleteLater);
        connect(m_socket, &QTcpSocket::bytesWritten, this, [this](qint64 count) {
            m_server.bytesSent += count;
            if (m_state == State::sending && m_reply.pause == 0)
                fill();
        });
    }
    Q_DISABLE_COPY_MOVE(Connection)
    ~Connection() override
    {
        --m_server.open;
        m_server.m_held.remove(m_index);
    }

    /// Sends the reply that the request has been given.
    void begin()
    {
        m_state = State::sending;
        write(m_reply.start);
        fill();
    }

private:
    enum class State : quint8 { idle, waiting, sending };

    void read()
    {
        m_input += m_socket->readAll();
        if (m_state != State::idle)
            return;
        const qsizetype end = m_input.indexOf("\r\n\r\n");
        if (end < 0)
            return;
        QByteArrayList lines = m_input.first(end).split('\n');
        const QByteArrayList words = lines.takeFirst().simplified().split(' ');
        Request request{words.value(0), words.value(1), {}, {}};
        for (const QByteArray &line : lines) {
            const qsizetype colon = line.indexOf(':');
            request.headers.insert(line.first(std::max<qsizetype>(colon, 0)).toLower(),
                                   line.mid(colon + 1).trimmed());
        }
        const qsizetype length = request.headers.value("content-length").toLongLong();
        if (m_input.size() < end + 4 + length)
            return;
        request.body = m_input.mid(end + 4, length);
        m_input.remove(0, end + 4 + length);
        answer(request);
    }

    void answer(const Request &request)
    {
        m_state = State::waiting;
        m_reply = m_server.replyTo(request);
        m_index = m_server.requests.size();
        m_server.requests.append(request);
        if (m_reply.isHeld)
            m_server.m_held.insert(m_index, this);
        else if (m_reply.delay > 0)
            QTimer::singleShot(m_reply.delay, this, &Connection::begin);
        else
            begin();
    }

    bool write(const QByteArray &bytes)
    {
        return m_socket->state() == QTcpSocket::ConnectedState && m_socket->write(bytes) >= 0;
    }

    /// Writes more of the filler when the client has taken what there was, or ends the reply.
    void fill()
    {
        if (m_reply.fillerSize > 0 && m_reply.pause > 0) {
            QTimer::singleShot(m_reply.pause, this, [this] {
                --m_reply.fillerSize;
                if (write(m_reply.filler.first(1)))
                    fill();
            });
            return;
        }
        while (m_reply.fillerSize > 0 && m_socket->bytesToWrite() < kBlock) {
            const qint64 count = std::min<qint64>(m_reply.filler.size(), m_reply.fillerSize);
            if (!write(m_reply.filler.first(count)))
                return; // the client has gone
            m_reply.fillerSize -= count;
        }
        if (m_reply.fillerSize > 0)
            return;
        m_state = State::idle;
        if (m_reply.closes)
            m_socket->disconnectFromHost();
        else
            read(); // what came meanwhile
    }

    ModelServer &m_server;
    QTcpSocket *m_socket;
    QByteArray m_input;
    Reply m_reply;
    State m_state = State::idle;
    qsizetype m_index = -1; ///< of the request that it answers
};

ModelServer::ModelServer(const QHostAddress &address)
{
    if (!m_server.listen(address))
        qFatal("cannot listen: %s", qPrintable(m_server.errorString()));
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
        while (QTcpSocket *socket = m_server.nextPendingConnection()) {
            auto *connection = new Connection(*this, socket);
            connection->setParent(&m_connections);
        }
    });
}

QString ModelServer::base() const
{
    QUrl url;
    url.setScheme(u"http"_s);
    url.setHost(m_server.serverAddress().toString());
    url.setPort(m_server.serverPort());
    url.setPath(u"/v1"_s);
    return url.toString();
}

void ModelServer::release(qsizetype index)
{
    if (Connection *connection = m_held.take(index))
        connection->begin();
}

Reply ModelServer::replyTo(const Request &request)
{
    if (request.method == "POST" && request.path == "/v1/chat/completions")
        return replies.isEmpty() ? defaultReply : replies.takeFirst();
    if (request.method != "GET" || request.path != "/v1/models")
        return Reply::body(R"({"error":{"message":"not found"}})", kNotFound);
    if (modelsReply)
        return *modelsReply;
    QJsonArray list;
    for (const QString &model : models)
        list.append(QJsonObject{{u"id"_s, model}, {u"object"_s, u"model"_s}});
    return Reply::body(json({{u"object"_s, u"list"_s}, {u"data"_s, list}}));
}

} // namespace dugwise::test
