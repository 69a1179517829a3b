// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine/TerminalAccessPrompt.h"

#include "Models/AccessQuestion.h"

#include <QCoroFuture>
#include <QtConcurrentRun>

#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <string>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

void say(const QString &text)
{
    std::fputs(text.toUtf8().constData(), stderr);
    std::fflush(stderr);
}

/// The person's answer to what was just asked.
std::optional<bool> readAnswer()
{
    for (;;) {
        say(u"y or n (Return: not now): "_s);
        std::string line;
        if (!std::getline(std::cin, line)) {
            // Whoever reads after this has an input of their own.
            std::cin.clear();
            std::clearerr(stdin);
            say(u"\n"_s);
            return std::nullopt;
        }
        const QString answer = QString::fromStdString(line).trimmed().toLower();
        if (answer.isEmpty())
            return std::nullopt;
        if (answer == "y"_L1 || answer == "yes"_L1)
            return true;
        if (answer == "n"_L1 || answer == "no"_L1)
            return false;
    }
}

} // namespace

QCoro::Task<std::optional<bool>> TerminalAccessPrompt::ask(PersonalData data)
{
    if (::isatty(STDIN_FILENO) == 0 || ::isatty(STDERR_FILENO) == 0)
        co_return std::nullopt;
    const AccessQuestion question = accessQuestion(data);
    say(question.title + u'\n' + question.whatIsRead + u'\n' + question.promise + u'\n');
    const QFuture<std::optional<bool>> reading = QtConcurrent::run(&m_reader, &readAnswer);
    const std::optional<bool> answer = co_await reading;
    co_return answer;
}

} // namespace dugwise
