// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ModelServer.h"

#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTcpSocket>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(dugwise::test::Reply)

namespace dugwise::test {

namespace {

constexpr int kPatience = 30'000;
constexpr qint64 kMegabyte = 1 << 20;

} // namespace

/// The odd replies as clients see them.
class TstModelServer : public QObject
{
    Q_OBJECT

private:
    using Answer = std::unique_ptr<QNetworkReply>;

    QNetworkAccessManager m_client;

    static QNetworkRequest request(const ModelServer &server, const QString &path)
    {
        QNetworkRequest request(QUrl(server.base() + path));
        request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);
        request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                             QNetworkRequest::ManualRedirectPolicy);
        return request;
    }
    Answer ask(const ModelServer &server, const QByteArray &body = "{}")
    {
        return Answer(m_client.post(request(server, u"/chat/completions"_s), body));
    }

private Q_SLOTS:
    void cleanup() { m_client.clearConnectionCache(); }

    void answersInOrderAndKeepsTheRequests()
    {
        const bool hasIPv6 = QTcpServer().listen(QHostAddress::LocalHostIPv6);
        ModelServer server(hasIPv6 ? QHostAddress::LocalHostIPv6 : QHostAddress::LocalHost);
        server.models = {u"first"_s, u"second"_s};
        server.replies = {Reply::content(u"Grüße"_s, u"length"_s)};
        const Answer models(m_client.get(request(server, u"/models"_s)));
        QTRY_VERIFY_WITH_TIMEOUT(models->isFinished(), kPatience);
        QCOMPARE(QJsonDocument::fromJson(models->readAll())["data"_L1][1]["id"_L1], u"second"_s);

        for (const QString &text : {u"Grüße"_s, u"An answer"_s}) {
            const Answer answer = ask(server, "[1]");
            QTRY_VERIFY_WITH_TIMEOUT(answer->isFinished(), kPatience);
            const QJsonValue choice = QJsonDocument::fromJson(answer->readAll())["choices"_L1][0];
            QCOMPARE(choice["message"_L1]["content"_L1], text);
        }
        QCOMPARE(server.requests.size(), 3);
        QCOMPARE(server.requests[0].method, "GET");
        QCOMPARE(server.requests[1].path, "/v1/chat/completions");
        QCOMPARE(server.requests[1].headers["content-type"], "application/json");
        QCOMPARE(server.requests[1].body, "[1]");
        QCOMPARE(server.accepted, 1);
    }

    void oddRepliesEnd_data()
    {
        QTest::addColumn<Reply>("reply");
        QTest::addColumn<QNetworkReply::NetworkError>("error");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("status") << Reply::body("no", 503) << QNetworkReply::ServiceUnavailableError
                                << 503 << QByteArray("no");
        QTest::newRow("redirect") << Reply::redirect(307, "http://192.0.2.1/")
                                  << QNetworkReply::NoError << 307 << QByteArray("");
        QTest::newRow("chunked") << Reply::chunked("0123456789", 3) << QNetworkReply::NoError << 200
                                 << QByteArray("0123456789");
        QTest::newRow("cut off") << Reply::cutOff("0123", 6) << QNetworkReply::RemoteHostClosedError
                                 << 200 << QByteArray("0123");
        QTest::newRow("closed") << Reply::closed() << QNetworkReply::RemoteHostClosedError << 0
                                << QByteArray("");
        QTest::newRow("late") << Reply::body("late").after(20) << QNetworkReply::NoError << 200
                              << QByteArray("late");
    }
    void oddRepliesEnd()
    {
        QFETCH(Reply, reply);
        ModelServer server;
        server.defaultReply = reply;
        const Answer answer = ask(server);
        QTRY_VERIFY_WITH_TIMEOUT(answer->isFinished(), kPatience);
        QTEST(answer->error(), "error");
        QTEST(answer->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), "status");
        QTEST(answer->readAll(), "body");
    }

    void endlessRepliesStopWithTheClient_data()
    {
        QTest::addColumn<Reply>("reply");
        QTest::newRow("headers") << Reply::endlessHeaders();
        QTest::newRow("one header") << Reply::endlessHeaderLine();
        QTest::newRow("body") << Reply::endlessBody();
        QTest::newRow("gigabyte") << Reply::large(1024 * kMegabyte);
    }
    void endlessRepliesStopWithTheClient()
    {
        QFETCH(Reply, reply);
        ModelServer server;
        server.replies = {reply};
        // Qt's client reads headers without end in its own thread, and cannot be stopped there.
        QTcpSocket client;
        client.setReadBufferSize(kMegabyte);
        const QUrl base(server.base());
        client.connectToHost(base.host(), static_cast<quint16>(base.port()));
        client.write("POST /v1/chat/completions HTTP/1.1\r\nContent-Length: 2\r\n\r\n{}");
        QTRY_COMPARE_WITH_TIMEOUT(client.bytesAvailable(), kMegabyte, kPatience);
        client.abort();
        QTRY_COMPARE_WITH_TIMEOUT(server.open, 0, kPatience);
        QVERIFY2(server.bytesSent < 64 * kMegabyte, QByteArray::number(server.bytesSent));
    }

    void heldRepliesComeWhenTheTestSays()
    {
        ModelServer server;
        server.defaultReply = Reply::body("held").held();
        const Answer first = ask(server);
        QTRY_COMPARE_WITH_TIMEOUT(server.requests.size(), 1, kPatience);
        const Answer second = ask(server);
        Answer third = ask(server);
        QTRY_COMPARE_WITH_TIMEOUT(server.requests.size(), 3, kPatience);
        third.reset();
        QTRY_COMPARE_WITH_TIMEOUT(server.open, 2, kPatience);
        server.release(2); // to nobody
        server.release(1);
        QTRY_VERIFY_WITH_TIMEOUT(second->isFinished(), kPatience);
        QVERIFY(!first->isFinished());
        server.release(0);
        QTRY_VERIFY_WITH_TIMEOUT(first->isFinished(), kPatience);
        QCOMPARE(first->readAll(), "held");
    }

    void silenceAndDripsLast()
    {
        ModelServer server;
        server.replies = {Reply::silence(), Reply::dripping(5)};
        const Answer silent = ask(server);
        QTRY_COMPARE_WITH_TIMEOUT(server.requests.size(), 1, kPatience);
        const Answer dripping = ask(server);
        QTRY_VERIFY_WITH_TIMEOUT(dripping->bytesAvailable() > 3, kPatience);
        QVERIFY(!dripping->isFinished());
        QVERIFY(!silent->isFinished());
        QCOMPARE(server.open, 2);
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstModelServer)
#include "tst_ModelServer.moc"
