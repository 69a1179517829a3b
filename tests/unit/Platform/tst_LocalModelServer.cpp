// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/LocalModelServer.h"
#include "support/ModelServer.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace dugwise::test {

class TstLocalModelServer : public QObject
{
    Q_OBJECT

private:
    static LanguageModelRequest plain(const QString &prompt)
    {
        return {u"Be brief."_s, prompt, std::nullopt};
    }

    /// A model over the server, asked once whether it is there.
    static std::unique_ptr<LocalModelServer> model(const ModelServer &server,
                                                   std::chrono::milliseconds timeout = 30s)
    {
        auto model = std::make_unique<LocalModelServer>(
            LocalModelServer::Settings{.url = server.base(), .timeout = timeout});
        QCoro::waitFor(model->firstAnswer());
        return model;
    }

    static Outcome<QString> ask(LocalModelServer &model, const QString &prompt)
    {
        Outcome<QString> outcome = Failure{};
        bool isAnswered = false;
        model.respond(plain(prompt)).then([&](const Outcome<QString> &text) {
            outcome = text;
            isAnswered = true;
        });
        return QTest::qWaitFor([&] { return isAnswered; }, 60'000) ? outcome : Failure{};
    }

private Q_SLOTS:
    void aModelIsAvailableWhenAServerListsOne()
    {
        ModelServer server;
        server.models = {u"small"_s, u"large"_s};
        const auto first = model(server);
        QVERIFY(first->isAvailable());
        QCOMPARE(first->description(), u"small at %1"_s.arg(server.base()));
        LocalModelServer chosen({.url = server.base() + u'/', .model = u"large"_s});
        QVERIFY(!chosen.isAvailable()); // not known yet
        QCoro::waitFor(chosen.firstAnswer());
        QVERIFY(chosen.isAvailable());
        QCOMPARE(chosen.description(), u"large at %1"_s.arg(server.base()));
    }

    void whatListsNoModelIsNone_data()
    {
        QTest::addColumn<Reply>("reply");
        QTest::newRow("no models") << Reply::body(R"({"object":"list","data":[]})");
        QTest::newRow("another server") << Reply::body("<html>Welcome</html>");
        QTest::newRow("error") << Reply::body(R"({"data":[{"id":"x"}]})", 404);
        QTest::newRow("elsewhere") << Reply::redirect(302, "http://192.0.2.1/v1/models");
        QTest::newRow("silence") << Reply::silence();
        QTest::newRow("drop by drop") << Reply::dripping(50);
        QTest::newRow("endless") << Reply::large(Reply::kEndless);
    }
    void whatListsNoModelIsNone()
    {
        QFETCH(Reply, reply);
        ModelServer server;
        server.modelsReply = reply;
        QElapsedTimer timer;
        timer.start();
        const auto none = model(server);
        QVERIFY(timer.elapsed() < 2000);
        QVERIFY(!none->isAvailable());
        QVERIFY(none->description().contains(u"no model server answers at "_s + server.base()));
    }

    void whatIsElsewhereIsNeverAsked()
    {
        LocalModelServer model({.url = u"http://192.0.2.1/v1"_s});
        QCoro::waitFor(model.firstAnswer());
        QVERIFY(!model.isAvailable());
        QCOMPARE(model.description(), u"http://192.0.2.1/v1 is not on this machine"_s);
    }

    void theAnswerIsRenewedWhileItIsAskedFor()
    {
        ModelServer server;
        const auto model = TstLocalModelServer::model(server);
        QVERIFY(model->isAvailable());
        QCOMPARE(server.requests.size(), 1); // known well enough
        server.models.clear();
        QTest::qWait(2100);
        QVERIFY(model->isAvailable()); // what was known; and it is looked again
        QTRY_VERIFY(!model->isAvailable());
        QCOMPARE(server.requests.size(), 2);
    }

    void aRequestIsOnePost()
    {
        ModelServer server;
        const auto model = TstLocalModelServer::model(server);
        const auto text = ask(*model, u"Say \"hi\" \u2014 now"_s);
        QCOMPARE(*text, u"An answer"_s);
        QCOMPARE(server.requests.size(), 2);
        const ModelServer::Request request = server.requests.last();
        QCOMPARE(request.method, "POST");
        QCOMPARE(request.path, "/v1/chat/completions");
        QCOMPARE(request.headers.value("content-type"), "application/json");
        QCOMPARE(request.headers.value("host"), server.base().section(u'/', 2, 2).toLatin1());
        QCOMPARE(
            request.body,
            "{\"model\":\"test-model\",\"messages\":[{\"role\":\"system\",\"content\":"
            "\"Be brief.\"},{\"role\":\"user\",\"content\":\"Say \\\"hi\\\" \xE2\x80\x94 now\"}"
            "],\"stream\":false}");
    }

    void answersAreTakenAsTheyAre_data()
    {
        QTest::addColumn<Reply>("reply");
        QTest::addColumn<QString>("text");
        const QString text = u"\n  Two **files**.\n"_s;
        QTest::newRow("untrimmed") << Reply::content(text) << text;
        QTest::newRow("in chunks")
            << Reply::chunked(R"({"choices":[{"message":{"content":"x"}}]})", 3) << u"x"_s;
    }
    void answersAreTakenAsTheyAre()
    {
        QFETCH(Reply, reply);
        QFETCH(QString, text);
        ModelServer server;
        server.replies = {reply};
        const auto model = TstLocalModelServer::model(server);
        const auto answer = ask(*model, u"?"_s);
        QVERIFY2(answer, answer ? "" : qPrintable(answer.error()));
        QCOMPARE(*answer, text);
    }

    void whatIsNoAnswerFailsOnce_data()
    {
        QTest::addColumn<Reply>("reply");
        const QByteArray completion = R"({"choices":[{"message":{"content":"x"}}]})";
        QTest::newRow("error") << Reply::body(completion, 500);
        QTest::newRow("asks for a word") << Reply::body(completion, 401);
        QTest::newRow("elsewhere") << Reply::redirect(307, "http://127.0.0.1:1/v1");
        QTest::newRow("cut off") << Reply::cutOff(completion, 10);
        QTest::newRow("closed") << Reply::closed();
        QTest::newRow("not JSON") << Reply::body("x" + completion);
        QTest::newRow("another encoding") << Reply::body("\xFF\xFE{\0\"\0" + QByteArray(10, '\0'));
        QTest::newRow("Latin-1") << Reply::body(
            "{\"choices\":[{\"message\":{\"content\":\"\xE9\"}}]}");
        QTest::newRow("nested") << Reply::body(QByteArray(10'000, '[') + QByteArray(10'000, ']'));
        QTest::newRow("no choice") << Reply::body(R"({"choices":[]})");
        QTest::newRow("no content") << Reply::body(R"({"choices":[{"message":{"content":null}}]})");
        QTest::newRow("empty content") << Reply::content(u""_s);
        QTest::newRow("cut short") << Reply::content(u"I found"_s, u"length"_s);
        QTest::newRow("a gigabyte") << Reply::large(1'000'000'000);
        QTest::newRow("silence") << Reply::silence();
        QTest::newRow("drop by drop") << Reply::dripping(50);
        QTest::newRow("endless headers") << Reply::endlessHeaders();
        QTest::newRow("endless header") << Reply::endlessHeaderLine();
    }
    void whatIsNoAnswerFailsOnce()
    {
        QFETCH(Reply, reply);
        ModelServer server;
        server.replies = {reply};
        const auto model = TstLocalModelServer::model(server, 700ms);
        const int before = server.accepted;
        const auto answer = ask(*model, u"?"_s);
        QVERIFY(!answer);
        QVERIFY(!answer.error().isEmpty());
        QCOMPARE(server.accepted, before + 1);
        QVERIFY(server.bytesSent < 64'000'000);
        QTRY_COMPARE(server.open, 0);
    }

    void nobodyThereFailsAtOnce()
    {
        auto server = std::make_unique<ModelServer>();
        const auto model = TstLocalModelServer::model(*server);
        server.reset();
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!ask(*model, u"?"_s));
        QVERIFY(timer.elapsed() < 1000);
    }

    void whatCannotBeConnectedToFailsAtOnce()
    {
        LoopbackHttp http;
        QElapsedTimer timer;
        timer.start();
        bool hasFailed = false;
        const LoopbackServer nowhere{QUrl(u"http://127.0.0.1:0"_s), u"127.0.0.1"_s};
        http.get(nowhere, u"/x"_s, 60s).then([&](const Outcome<QByteArray> &answer) {
            hasFailed = !answer;
        });
        QTRY_VERIFY(hasFailed);
        QVERIFY(timer.elapsed() < 2000);
    }

    void aServerMayHangUpWhileItIsWrittenTo()
    {
        ModelServer server;
        server.defaultReply = Reply::closed();
        LoopbackHttp http;
        int ended = 0;
        const LoopbackServer here{QUrl(server.base()), u"127.0.0.1"_s};
        const QByteArray large(3'000'000, ' ');
        constexpr int kRounds = 20;
        for (int i = 0; i < kRounds; ++i)
            http.post(here, u"/nothing"_s, large, 60s).then([&](const auto &) { ++ended; });
        QTRY_COMPARE_WITH_TIMEOUT(ended, kRounds, 60'000);
    }

    void requestsOverlap()
    {
        ModelServer server;
        server.replies = {Reply::content(u"first"_s).held(), Reply::content(u"second"_s)};
        const auto model = TstLocalModelServer::model(server);
        QStringList order;
        const auto note = [&order](const Outcome<QString> &text) { order.append(*text); };
        model->respond(plain(u"1"_s)).then(note);
        QTRY_COMPARE(server.requests.size(), 2);
        model->respond(plain(u"2"_s)).then(note);
        QTRY_COMPARE(order, QStringList{u"second"_s});
        server.release(1);
        QTRY_COMPARE(order, QStringList({u"second"_s, u"first"_s}));
    }

    void theModelMayGoWhileItIsAsked()
    {
        ModelServer server;
        server.replies = {Reply::silence()};
        auto model = TstLocalModelServer::model(server);
        bool hasFailed = false;
        model->respond(plain(u"?"_s)).then([&](const Outcome<QString> &text) {
            hasFailed = !text;
        });
        QTRY_COMPARE(server.requests.size(), 2);
        model.reset();
        QTRY_VERIFY(hasFailed);
        {
            LocalModelServer probing({.url = server.base()});
            QVERIFY(!probing.isAvailable());
        }
        QTest::qWait(0);
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstLocalModelServer)
#include "tst_LocalModelServer.moc"
