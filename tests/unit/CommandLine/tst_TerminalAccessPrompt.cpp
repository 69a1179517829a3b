// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine/TerminalAccessPrompt.h"

#include <QTest>

#include <poll.h>
#include <pty.h>
#include <unistd.h>

#include <iostream>
#include <string>

using namespace Qt::StringLiterals;
using namespace dugwise;

using Answer = std::optional<bool>;

/// Asks with this process's own standard input and standard error, which a terminal of the test
/// stands in for.
class TstTerminalAccessPrompt : public QObject
{
    Q_OBJECT

private:
    static constexpr int kEnds[] = {STDIN_FILENO, STDERR_FILENO};

    int m_person = -1; ///< the end where the person sits
    int m_terminal = -1;
    int m_saved[2] = {-1, -1};

    [[nodiscard]] QByteArray shown() const
    {
        QByteArray all;
        pollfd state{.fd = m_person, .events = POLLIN, .revents = 0};
        while (::poll(&state, 1, 0) == 1) {
            char bytes[1024];
            const ssize_t length = ::read(m_person, bytes, sizeof bytes);
            if (length <= 0)
                break;
            all.append(bytes, length);
        }
        return all.replace("\r\n", "\n");
    }
    void type(const QByteArray &keys) const
    {
        QCOMPARE(::write(m_person, keys.constData(), static_cast<size_t>(keys.size())),
                 keys.size());
    }

private Q_SLOTS:
    void init()
    {
        QCOMPARE(::openpty(&m_person, &m_terminal, nullptr, nullptr, nullptr), 0);
        for (const int i : {0, 1}) {
            m_saved[i] = ::dup(kEnds[i]);
            ::dup2(m_terminal, kEnds[i]);
        }
    }
    void cleanup()
    {
        for (const int i : {0, 1}) {
            ::dup2(m_saved[i], kEnds[i]);
            ::close(m_saved[i]);
        }
        ::close(m_person);
        ::close(m_terminal);
    }

    void takesTheAnswer_data()
    {
        QTest::addColumn<QByteArray>("keys");
        QTest::addColumn<Answer>("answer");
        QTest::addColumn<int>("times"); // that it is asked
        const auto row = [](const char *name, const QByteArray &keys, Answer answer, int times) {
            QTest::newRow(name) << keys << answer << times;
        };
        row("y", "y\n", true, 1);
        row("yes", " YES \n", true, 1);
        row("n", "n\n", false, 1);
        row("no", "No\n", false, 1);
        row("an empty line", "\n", {}, 1);
        row("the end", "\x04", {}, 1);
        row("something else first", "yeah\n\xFFy\n\nn\n", {}, 3);
    }
    void takesTheAnswer()
    {
        QFETCH(QByteArray, keys);
        TerminalAccessPrompt prompt;
        QCoro::Task<Answer> asking = prompt.ask(PersonalData::contacts);
        type(keys);
        const Answer answer = QCoro::waitFor(asking);
        QTEST(answer, "answer");
        const QByteArray text = shown();
        QVERIFY2(text.contains("read your contacts?\n"), text.constData());
        QVERIFY(text.contains("nothing leaves this machine"));
        QTEST(static_cast<int>(text.count("y or n ")), "times");
        // Who reads after that gets what comes after that.
        type("next\n");
        std::string line;
        while (line != "next")
            QVERIFY(std::getline(std::cin, line));
    }

    void nobodyIsAskedWithoutATerminal()
    {
        for (const int i : {0, 1}) {
            ::dup2(m_terminal, kEnds[1 - i]);
            int ends[2];
            QCOMPARE(::pipe(ends), 0);
            ::dup2(ends[1], kEnds[i]);
            TerminalAccessPrompt prompt;
            const Answer answer = QCoro::waitFor(prompt.ask(PersonalData::calendar));
            QVERIFY(!answer);
            ::close(ends[0]);
            ::close(ends[1]);
        }
    }
};

QTEST_GUILESS_MAIN(TstTerminalAccessPrompt)
#include "tst_TerminalAccessPrompt.moc"
