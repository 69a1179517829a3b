// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SingleWindow.h"
#include "Views/WindowServer.h"
#include "support/SampleFiles.h"

#include <QElapsedTimer>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QtConcurrentRun>

#include <array>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace dugwise::test {

using Turn = SingleWindow::Turn;

namespace {

/// A window that is open, without the window: what it took, in order.
struct OpenWindow
{
    SingleWindow window;
    std::unique_ptr<WindowServer> server;
    QList<WindowMessage> taken;

    explicit OpenWindow(const QString &path)
        : window(path)
    {}
    [[nodiscard]] bool open(std::chrono::milliseconds patience = 60s)
    {
        const bool isOurs = window.take({}, 0ms) == Turn::ours;
        listen(patience);
        return isOurs;
    }
    void listen(std::chrono::milliseconds patience = 60s)
    {
        server = std::make_unique<WindowServer>(window.socketPath(), patience);
        QObject::connect(server.get(), &WindowServer::received, [this](const WindowMessage &one) {
            taken.append(one);
        });
    }
};

/// A later start, which waits in a thread of its own as it would in a process of its own.
QFuture<Turn> startLater(const QString &path, const WindowMessage &message)
{
    return QtConcurrent::run([path, message] { return SingleWindow(path).take(message, 60s); });
}

Turn finish(const QFuture<Turn> &turn)
{
    return QTest::qWaitFor([&] { return turn.isFinished(); }, 60'000) ? turn.result()
                                                                      : Turn::unanswered;
}

} // namespace

class TstSingleWindow : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;

    [[nodiscard]] QString path() const { return m_folder->filePath(u"window"_s); }

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void aLaterStartHandsOver_data()
    {
        QTest::addColumn<WindowMessage>("message");
        QTest::newRow("to the front") << WindowMessage{};
        QTest::newRow("lines and letters")
            << WindowMessage{u"a\nb\r\n\"\\ шум 🎉\t\u2028"_s, u"x"_s};
        const QString longest(WindowMessage::kLongestRequest, QChar(1)); // six bytes each
        QTest::newRow("longest") << WindowMessage{longest, longest.left(1000)};
    }
    void aLaterStartHandsOver()
    {
        QFETCH(const WindowMessage, message);
        OpenWindow first(path());
        QVERIFY(first.open());
        QCOMPARE(
            QFile::permissions(path())
                & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
            QFile::Permissions());
        QCOMPARE(finish(startLater(path(), message)), Turn::handedOver);
        QCOMPARE(first.taken, QList{message});
    }

    void whatIsTooLongIsCut()
    {
        const QString endless(3'000'000, u'x');
        const auto cut = WindowMessage::fromLine(WindowMessage{endless, endless}.toLine());
        QVERIFY(cut);
        QCOMPARE(cut->request.size(), 100'000);
    }

    void startsAtOnceAllArrive()
    {
        constexpr int kStarts = 40; // more than are let in together
        QThreadPool::globalInstance()->setMaxThreadCount(kStarts);
        OpenWindow window(path());
        QCOMPARE(window.window.take({}, 0ms), Turn::ours);
        QList<QFuture<Turn>> starts;
        QSet<QString> asked;
        for (int i = 0; i < kStarts; ++i) {
            asked.insert(QString::number(i));
            starts.append(startLater(path(), {QString::number(i), {}}));
        }
        QTest::qWait(120); // they find nobody there yet
        window.listen();
        for (const QFuture<Turn> &start : starts)
            QCOMPARE(finish(start), Turn::handedOver);
        QCOMPARE(window.taken.size(), kStarts);
        for (const WindowMessage &message : window.taken)
            QVERIFY2(asked.remove(message.request), "taken twice");
    }

    void whatAKilledWindowLeftIsReplaced()
    {
        QLocalServer killed;
        QVERIFY(killed.listen(path()));
        QVERIFY(QFile::rename(path(), path() + u'2')); // so that it is not removed
        killed.close();
        QVERIFY(QFile::rename(path() + u'2', path()));
        OpenWindow first(path());
        QVERIFY(first.open());
        QCOMPARE(finish(startLater(path(), {u"x"_s, {}})), Turn::handedOver);
    }

    void aWindowThatDoesNotAnswerIsTold()
    {
        SingleWindow first(path());
        QCOMPARE(first.take({}, 0ms), Turn::ours);
        QCOMPARE(SingleWindow(path()).take({}, 120ms), Turn::unanswered); // nobody listens
        const WindowServer server(first.socketPath());
        QElapsedTimer time;
        time.start();
        QCOMPARE(SingleWindow(path()).take({}, 120ms), Turn::unanswered); // nor reads
        QCOMPARE_LT(time.elapsed(), 5000);
    }

    void aWindowThatEndsMakesRoom()
    {
        auto first = std::make_unique<OpenWindow>(path());
        QVERIFY(first->open());
        first->server.reset();
        const QFuture<Turn> next = startLater(path(), {u"x"_s, {}});
        QTest::qWait(120);
        QVERIFY(!next.isFinished());
        first.reset();
        QCOMPARE(finish(next), Turn::ours);
    }

    void withoutALockEachHasItsOwn()
    {
        for (const QString &nowhere : {QString(), path() + u"/missing/window"_s}) {
            SingleWindow first(nowhere);
            SingleWindow second(nowhere);
            QCOMPARE(first.take({}, 0ms), Turn::ours);
            QCOMPARE(second.take({}, 0ms), Turn::ours);
            QCOMPARE(second.socketPath(), QString());
        }
    }

    void whatIsNoMessageChangesNothing_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("garbage") << QByteArray("\0\xFF{]\n", 5);
        QTest::newRow("blank") << QByteArray("\n");
        QTest::newRow("other JSON") << QByteArray("[{\"request\":\"x\"}]\n");
        QTest::newRow("no token") << QByteArray("{\"request\":\"x\"}\n");
        QTest::newRow("no text") << QByteArray("{\"request\":1,\"activationToken\":\"\"}\n");
        QTest::newRow("nested") << QByteArray(500'000, '[') + '\n';
        QTest::newRow("too long") << QByteArray(8'000'000, 'x');
        QTest::newRow("unfinished") << WindowMessage{u"x"_s, {}}.toLine().chopped(1);
        QTest::newRow("silence") << QByteArray();
    }
    void whatIsNoMessageChangesNothing()
    {
        QFETCH(const QByteArray, bytes);
        OpenWindow first(path());
        QVERIFY(first.open(bytes.endsWith('\n') ? 60s : 500ms));
        QLocalSocket client;
        client.connectToServer(path());
        client.write(bytes);
        QTRY_COMPARE_WITH_TIMEOUT(client.state(), QLocalSocket::UnconnectedState, 30'000);
        QVERIFY(client.readAll().isEmpty());
        QVERIFY(first.taken.isEmpty());
        QCOMPARE(finish(startLater(path(), {u"y"_s, {}})), Turn::handedOver);
        QCOMPARE(first.taken.size(), 1);
    }

    void aConnectionHandsOverOneMessage()
    {
        OpenWindow first(path());
        QVERIFY(first.open());
        QLocalSocket client;
        client.connectToServer(path());
        client.write(WindowMessage{u"x"_s, {}}.toLine() + WindowMessage{u"y"_s, {}}.toLine());
        QTRY_COMPARE(client.state(), QLocalSocket::UnconnectedState);
        QCOMPARE(first.taken, (QList{WindowMessage{u"x"_s, {}}}));
    }

    void fewConnectionsAreLetInAtOnce()
    {
        OpenWindow first(path());
        QVERIFY(first.open(1s));
        std::array<QLocalSocket, 30> silent;
        for (QLocalSocket &socket : silent)
            socket.connectToServer(path());
        const auto connected = [&] {
            return std::ranges::count(
                silent, QLocalSocket::ConnectedState, [](auto &one) { return one.state(); });
        };
        QTRY_COMPARE(connected(), WindowServer::kMostConnections);
        // A start that is not let in tries again.
        QCOMPARE(finish(startLater(path(), {u"x"_s, {}})), Turn::handedOver);
    }

    void theSocketsPathTellsDisplaysApart()
    {
        const QString runtime = m_folder->path();
        const QString cache = m_folder->filePath(u"cache"_s);
        const auto pathOn = [&](const QByteArray &display, const QString &folder) {
            qputenv("DISPLAY", display);
            qputenv("XDG_RUNTIME_DIR", folder.toUtf8());
            return windowSocketPath(cache);
        };
        const QString first = pathOn(":0", runtime);
        QVERIFY(first.startsWith(runtime + u"/Dugwise/"_s));
        QCOMPARE(QFile::permissions(runtime + u"/Dugwise"_s) & QFile::Permissions(0x0fff),
                 QFile::permissions(runtime) & QFile::Permissions(0x0fff)); // 0700
        QCOMPARE(pathOn(":0", runtime), first);
        QVERIFY(pathOn(":1", runtime) != first);

        QVERIFY(pathOn(":0", runtime + u"/missing"_s).startsWith(cache));
        QVERIFY(!QFile::exists(runtime + u"/missing"_s));
        QVERIFY(pathOn(":0", u"relative"_s).startsWith(cache));
        const QString tooLong = runtime + u'/' + QString(90, u'x');
        QVERIFY(QDir().mkpath(tooLong));
        QVERIFY(pathOn(":0", tooLong).startsWith(cache));
        QCOMPARE(windowSocketPath(tooLong), QString());
        QVERIFY(QDir(tooLong).isEmpty());
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstSingleWindow)
#include "tst_SingleWindow.moc"
