// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/FileDescriptor.h"
#include "support/NetworkGuard.h"

#include <QTest>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;
using namespace std::literals;

namespace dugwise::test {

namespace {

constexpr int kTimeout = 60'000;
constexpr auto kAttempt = "--attempt"_L1;
constexpr int kThreads = 8;
constexpr int kRounds = 50;
constexpr quint16 kPort = 9009; // one that everybody may bind

struct Address
{
    sockaddr_storage storage{};
    socklen_t size = 0;

    explicit Address(const char *text)
    {
        sockaddr_in internet{.sin_family = AF_INET, .sin_port = htons(kPort)};
        sockaddr_in6 internet6{.sin6_family = AF_INET6, .sin6_port = htons(kPort)};
        sockaddr_un local{.sun_family = AF_UNIX, .sun_path = {}};
        if (::inet_pton(AF_INET, text, &internet.sin_addr) == 1) {
            assign(internet);
        } else if (::inet_pton(AF_INET6, text, &internet6.sin6_addr) == 1) {
            assign(internet6);
        } else {
            std::strncpy(local.sun_path, text, sizeof local.sun_path - 1);
            assign(local);
        }
    }
    [[nodiscard]] sockaddr *get() { return reinterpret_cast<sockaddr *>(&storage); }

private:
    void assign(const auto &address)
    {
        std::memcpy(&storage, &address, sizeof address);
        size = sizeof address;
    }
};

/// Does one call; 0 or its error. Datagrams, so that nothing would have to answer.
int attempt(std::string_view call, const char *target)
{
    if (call == "socket"sv)
        return FileDescriptor(::socket(std::atoi(target), SOCK_DGRAM, 0)) ? 0 : errno;
    if (call == "io_uring"sv)
        return ::syscall(SYS_io_uring_setup, 1, nullptr) < 0 ? errno : 0;

    Address to(target);
    const FileDescriptor descriptor(::socket(to.storage.ss_family, SOCK_DGRAM, 0));
    const int socket = descriptor.get();
    char byte = 'x';
    iovec data{&byte, 1};
    const msghdr named{to.get(), to.size, &data, 1, nullptr, 0, 0};
    long result = -1;
    if (call == "connect"sv)
        result = ::connect(socket, to.get(), to.size);
    else if (call == "bind"sv)
        result = ::bind(socket, to.get(), to.size);
    else if (call == "sendmsg"sv)
        result = ::sendmsg(socket, &named, 0);
    else if (call == "sendmmsg"sv) { // the first takes another way
        Address loopback("127.0.0.1");
        std::array<mmsghdr, 2> both{
            {{{loopback.get(), loopback.size, &data, 1, nullptr, 0, 0}, 0}, {named, 0}}};
        result = ::sendmmsg(socket, both.data(), both.size(), 0);
    } else {
        if (call == "unspecified"sv) // the kernel takes it for one of the family of the socket
            to.storage.ss_family = AF_UNSPEC;
        result = ::sendto(socket, &byte, 1, 0, to.get(), to.size);
    }
    return result < 0 ? errno : 0;
}

/// The same call many times from many threads at once.
int attemptInThreads(const char *target)
{
    std::array<int, kThreads> errors{};
    {
        std::vector<std::jthread> threads;
        for (int &error : errors) {
            threads.emplace_back([&error, target] {
                for (int round = 0; round < kRounds; ++round)
                    error |= attempt("connect"sv, target);
            });
        }
    }
    return *std::ranges::max_element(errors);
}

} // namespace

/// What the guard of the program's tests lets pass and what it catches. This same program is what
/// it guards.
class TstNetworkGuard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void seesEachCall_data()
    {
        QTest::addColumn<QString>("call");
        QTest::addColumn<QString>("target");
        QTest::addColumn<int>("error");
        QTest::addColumn<QString>("offence");
        QTest::addColumn<QString>("loopback");
        const auto row = [](const QString &call,
                            const QString &target,
                            int error,
                            const QString &offence = {},
                            const QString &loopback = {}) {
            QTest::addRow("%s %s", qPrintable(call), qPrintable(target))
                << call << target << error << offence << loopback;
        };
        row(u"connect"_s, u"127.0.0.1"_s, 0, {}, u"127.0.0.1:9009"_s);
        row(u"connect"_s, u"127.200.0.1"_s, 0, {}, u"127.200.0.1:9009"_s);
        row(u"sendto"_s, u"127.0.0.1"_s, 0, {}, u"127.0.0.1:9009"_s);
        row(u"sendmsg"_s, u"127.0.0.1"_s, 0, {}, u"127.0.0.1:9009"_s);
        row(u"bind"_s, u"127.0.0.1"_s, 0);
        if (attempt("connect"sv, "::1") == 0) { // containers may have none
            row(u"connect"_s, u"::1"_s, 0, {}, u"[::1]:9009"_s);
            row(u"sendmsg"_s, u"::1"_s, 0, {}, u"[::1]:9009"_s);
        }
        row(u"connect"_s, u"/proc/nonexistent"_s, ENOENT);
        row(u"sendmsg"_s, u"/proc/nonexistent"_s, ENOENT);
        row(u"socket"_s, QString::number(AF_NETLINK), 0);
        row(u"io_uring"_s, {}, ENOSYS);

        const QString away = u"192.0.2.1"_s; // an address for documentation, which nobody has
        row(u"connect"_s, away, EACCES, u"connect to 192.0.2.1:9009"_s);
        row(u"connect"_s, u"2001:db8::1"_s, EACCES, u"connect to [2001:db8::1]:9009"_s);
        row(u"connect"_s, u"::ffff:192.0.2.1"_s, EACCES, u"connect to [::ffff:192.0.2.1]:9009"_s);
        row(u"sendto"_s, away, EACCES, u"send to 192.0.2.1:9009"_s);
        row(u"unspecified"_s, away, EACCES, u"send to 192.0.2.1:9009"_s);
        row(u"sendmsg"_s, away, EACCES, u"send to 192.0.2.1:9009"_s);
        row(u"sendmmsg"_s, away, EACCES, u"send to 192.0.2.1:9009"_s, u"127.0.0.1:9009"_s);
        row(u"bind"_s, u"0.0.0.0"_s, EACCES, u"bind to 0.0.0.0:9009"_s);
        row(u"bind"_s, u"::"_s, EACCES, u"bind to [::]:9009"_s);
        row(u"socket"_s, QString::number(AF_PACKET), EACCES, u"socket of family 17"_s);
        row(u"socket"_s, u"1000"_s, EACCES, u"socket of family 1000"_s);
    }
    void seesEachCall()
    {
        QFETCH(QString, call);
        QFETCH(QString, target);
        QFETCH(QString, offence);
        QFETCH(QString, loopback);
        QProcess process;
        const NetworkGuard guard(process);
        process.start(QCoreApplication::applicationFilePath(), {kAttempt, call, target});
        QVERIFY(process.waitForFinished(kTimeout));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QTEST(process.exitCode(), "error");
        QCOMPARE(guard.offences().join(u','),
                 offence.isEmpty() ? offence : "tst_NetworkGuard: "_L1 + offence);
        QCOMPARE(guard.loopbackConnections().join(u','), loopback);
    }

    void seesEveryThreadAndChild()
    {
        std::array<QProcess, 2> processes;
        const std::array<NetworkGuard, 2> guards{NetworkGuard(processes[0]),
                                                 NetworkGuard(processes[1])};
        const QString program = QCoreApplication::applicationFilePath();
        processes[0].start(program, {kAttempt, u"threads"_s, u"127.0.0.1"_s});
        processes[1].start(u"/bin/sh"_s,
                           {u"-c"_s, u"\"$0\" --attempt connect 192.0.2.1; exit 3"_s, program});
        for (QProcess &process : processes)
            QVERIFY(process.waitForFinished(kTimeout));
        QCOMPARE(processes[0].exitCode(), 0);
        QCOMPARE(guards[0].loopbackConnections().count(u"127.0.0.1:9009"_s), kThreads * kRounds);
        QVERIFY(guards[0].offences().isEmpty());
        QCOMPARE(processes[1].exitCode(), 3);
        QCOMPARE(guards[1].offences(),
                 QStringList(u"tst_NetworkGuard: connect to 192.0.2.1:9009"_s));
    }

    /// Without somebody to ask, nothing is allowed, and nobody waits.
    void anEndOfTheGuardEndsTheNetwork()
    {
        QProcess process;
        {
            const NetworkGuard neverStarted(process);
        }
        {
            const NetworkGuard guard(process);
            process.start(u"/bin/sh"_s,
                          {u"-c"_s,
                           u"read line; exec \"$0\" --attempt connect 127.0.0.1"_s,
                           QCoreApplication::applicationFilePath()});
            QVERIFY(process.waitForStarted(kTimeout));
        }
        process.write("go\n");
        QVERIFY(process.waitForFinished(kTimeout));
        QCOMPARE(process.exitCode(), ENOSYS);
    }
};

} // namespace dugwise::test

int main(int argc, char *argv[])
{
    using namespace dugwise::test;
    if (argc == 4 && kAttempt == QLatin1String(argv[1]))
        return argv[2] == "threads"sv ? attemptInThreads(argv[3]) : attempt(argv[2], argv[3]);
    const QCoreApplication application(argc, argv);
    TstNetworkGuard test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_NetworkGuard.moc"
