// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHostAddress>
#include <QMap>
#include <QTcpServer>

#include <limits>
#include <optional>

namespace dugwise::test {

/// What a server sends for one request: `start`, then `filler` again and again until `fillerSize`
/// bytes of it are sent, then the end of the connection where `closes`. The bytes are those of the
/// wire, and need not be proper HTTP.
struct Reply
{
    QByteArray start;
    QByteArray filler;
    qint64 fillerSize = 0;
    int pause = 0; ///< milliseconds before each byte of the filler; 0 as fast as the client reads
    bool closes = false;
    int delay = 0;       ///< milliseconds before anything is sent
    bool isHeld = false; ///< nothing is sent until release()

    static constexpr qint64 kEndless = std::numeric_limits<qint64>::max();

    /// A chat completion with this text.
    [[nodiscard]] static Reply content(const QString &text,
                                       const QString &finishReason = QStringLiteral("stop"));
    [[nodiscard]] static Reply body(const QByteArray &body, int status = 200);
    [[nodiscard]] static Reply redirect(int status, const QByteArray &location);
    /// The body in chunks of `size` bytes.
    [[nodiscard]] static Reply chunked(const QByteArray &body, qsizetype size);
    /// Promises `missing` more bytes than the body has, and closes.
    [[nodiscard]] static Reply cutOff(const QByteArray &body, qint64 missing);
    /// Closes without a byte.
    [[nodiscard]] static Reply closed();
    /// Never says anything, and stays connected.
    [[nodiscard]] static Reply silence();
    /// Headers without end, of lines of 64 bytes or of one line.
    [[nodiscard]] static Reply endlessHeaders();
    [[nodiscard]] static Reply endlessHeaderLine();
    /// A body of spaces, made as the client reads.
    [[nodiscard]] static Reply large(qint64 size);
    /// A body of spaces without a stated length that never ends.
    [[nodiscard]] static Reply endlessBody();
    /// A body of a thousand spaces, one after each pause.
    [[nodiscard]] static Reply dripping(int milliseconds);

    [[nodiscard]] Reply after(int milliseconds) const;
    [[nodiscard]] Reply held() const;
};

/// A server of language models on this machine, in the event loop of its thread, which answers as a
/// test tells it: GET /v1/models, and POST /v1/chat/completions from a queue.
class ModelServer
{
public:
    struct Request
    {
        QByteArray method;
        QByteArray path;
        QMap<QByteArray, QByteArray> headers; ///< by names in lower case
        QByteArray body;
    };

    explicit ModelServer(const QHostAddress &address = QHostAddress(QHostAddress::LocalHost));
    Q_DISABLE_COPY_MOVE(ModelServer)
    ~ModelServer() = default;

    /// As "http://127.0.0.1:41234/v1".
    [[nodiscard]] QString base() const;
    /// Sends what was held back for requests[index].
    void release(qsizetype index);

    QStringList models{QStringLiteral("test-model")};
    std::optional<Reply> modelsReply; ///< in place of the list of models
    QList<Reply> replies;             ///< to completions, the first one next
    Reply defaultReply = Reply::content(QStringLiteral("An answer")); ///< when there are no more

    QList<Request> requests; ///< in the order in which they were complete
    int accepted = 0;        ///< connections so far
    int open = 0;            ///< connections now
    qint64 bytesSent = 0;    ///< handed to the system; it keeps some megabytes for a slow client

private:
    class Connection;

    [[nodiscard]] Reply replyTo(const Request &request);

    QTcpServer m_server;
    QMap<qsizetype, Connection *> m_held; ///< by the index of their requests
    QObject m_connections;                ///< their parent; the first to go
};

} // namespace dugwise::test
