// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Sandbox.h"
#include "support/SampleFiles.h"

#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <functional>

using namespace Qt::StringLiterals;

namespace dugwise::test {

namespace {

using Attempt = std::function<bool()>;

constexpr int kSucceeded = 10;
constexpr int kRefused = 11;
constexpr int kNotConfined = 12;

/// What comes of an attempt in a process that has confined itself: "succeeded", "refused" or
/// "killed" when the kernel ended the process for it.
QByteArray confined(const QByteArray &readableFolder, const Attempt &attempt)
{
    const pid_t process = ::fork();
    if (process == 0) {
        if (!Sandbox::confine(readableFolder.constData()))
            ::_exit(kNotConfined);
        ::_exit(attempt() ? kSucceeded : kRefused);
    }
    int status = 0;
    ::waitpid(process, &status, 0);
    if (WIFSIGNALED(status))
        return WTERMSIG(status) == SIGSYS ? "killed" : "died of something else";
    switch (WEXITSTATUS(status)) {
    case kSucceeded:
        return "succeeded";
    case kRefused:
        return "refused";
    default:
        return "not confined";
    }
}

} // namespace

class TstSandbox : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QByteArray m_readable;
    QByteArray m_secret;
    QByteArray m_allowed;
    int m_open = -1; ///< a file that was opened for writing beforehand

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(Sandbox::isAvailable(), "this kernel has no Landlock, or no seccomp filters");
        m_readable = m_folder.filePath(u"readable"_s).toUtf8();
        m_secret = m_folder.filePath(u"secret"_s).toUtf8();
        m_allowed = m_readable + "/data";
        writeFile(QString::fromUtf8(m_secret), "secret");
        writeFile(QString::fromUtf8(m_allowed), "data");
        m_open = ::open((m_secret + ".log").constData(), O_CREAT | O_RDWR | O_CLOEXEC, 0600);
        QVERIFY(m_open >= 0);
    }

    void holds_data()
    {
        QTest::addColumn<Attempt>("attempt");
        QTest::addColumn<QByteArray>("outcome");
        const auto row = [](const char *name, const Attempt &attempt, const char *outcome) {
            QTest::newRow(name) << attempt << QByteArray(outcome);
        };
        const auto opens = [](const QByteArray &path, int flags) {
            return [=] { return ::open(path.constData(), flags, 0600) >= 0; };
        };
        row("read what may be read", opens(m_allowed, O_RDONLY), "succeeded");
        row("read a file", opens(m_secret, O_RDONLY), "refused");
        row("read the accounts", opens("/etc/passwd", O_RDONLY), "refused");
        row("list a folder", opens("/", O_RDONLY | O_DIRECTORY), "refused");
        row("write a file", opens(m_secret, O_WRONLY), "killed");
        row("write where it may read", opens(m_allowed, O_RDWR), "killed");
        row("make a file", opens(m_readable + "/new", O_WRONLY | O_CREAT), "killed");
        row("make a nameless file", opens(m_readable, O_RDWR | O_TMPFILE), "killed");
        row(
            "remove", [this] { return ::unlink(m_secret.constData()) == 0; }, "killed");
        row(
            "rename", [this] { return ::rename(m_secret.constData(), "/tmp/x") == 0; }, "killed");
        row(
            "cut", [this] { return ::ftruncate(m_open, 0) == 0; }, "killed");
        row(
            "run a program", [] { return ::execl("/bin/true", "true", nullptr) == 0; }, "killed");
        row(
            "start a process", [] { return ::fork() >= 0; }, "killed");
        row(
            "connect", [] { return connects(); }, "killed");
        row(
            "reach the network", [] { return ::socket(AF_INET, SOCK_STREAM, 0) >= 0; }, "killed");
        row(
            "make code", [] { return mapped(4096, PROT_READ | PROT_EXEC); }, "killed");
        row(
            "kill its parent", [] { return ::kill(::getppid(), 0) == 0; }, "killed");
        row(
            "gain rights", [] { return ::setuid(0) == 0; }, "killed");
        row(
            "compute", [] { return mapped(1 << 20, PROT_READ | PROT_WRITE); }, "succeeded");
        const auto writes = [this] { return ::write(m_open, "x", 1) == 1; };
        row("write what is open", writes, "killed");
#ifndef __SANITIZE_ADDRESS__
        row(
            "take much memory", [] { return mapped(2UL << 30U, PROT_READ); }, "refused");
#endif
    }
    void holds()
    {
        QFETCH(Attempt, attempt);
        QTEST(confined(m_readable, attempt), "outcome");
        QCOMPARE(readFile(QString::fromUtf8(m_secret)), "secret");
    }

    void theAttemptsWouldSucceedElsewhere()
    {
        QVERIFY(::open(m_secret.constData(), O_WRONLY | O_CLOEXEC) >= 0);
        QVERIFY(connects());
        QVERIFY(mapped(4096, PROT_READ | PROT_EXEC));
    }

    void diesWithItsParent()
    {
        std::array<int, 2> pipe{};
        QCOMPARE(::pipe2(pipe.data(), O_CLOEXEC), 0);
        const pid_t parent = ::fork();
        if (parent == 0) {
            if (::fork() == 0) {
                while (Sandbox::confine(m_readable.constData())) {
                    for (;;) // keeps its end of the pipe open as long as it lives
                        continue;
                }
            }
            ::usleep(200'000);
            ::_exit(0);
        }
        ::close(pipe[1]);
        ::waitpid(parent, nullptr, 0);
        char byte = 0;
        QCOMPARE(::read(pipe[0], &byte, 1), 0);
        ::close(pipe[0]);
    }

private:
    static bool mapped(std::size_t size, int protection)
    {
        return ::mmap(nullptr, size, protection, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) != MAP_FAILED;
    }
    static bool connects()
    {
        std::array<int, 2> ends{};
        return ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) == 0;
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstSandbox)
#include "tst_Sandbox.moc"
