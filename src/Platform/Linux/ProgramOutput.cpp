// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/ProgramOutput.h"

#include <QCoroFuture>
#include <QProcess>
#include <QPromise>

#include <sys/prctl.h>

#include <csignal>

namespace dugwise {

QCoro::Task<std::optional<QByteArray>> programOutput(QString program,
                                                     QStringList arguments,
                                                     std::stop_token stop,
                                                     QProcessEnvironment environment)
{
    QPromise<void> promise;
    promise.start();
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    QObject::connect(&process, &QProcess::finished, [&promise] { promise.finish(); });
    QObject::connect(&process, &QProcess::errorOccurred, [&promise](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) // it never finishes then
            promise.finish();
    });
    process.start(QIODevice::ReadOnly);
    const std::stop_callback killing(stop, [&process] { process.kill(); });
    const QFuture<void> end = promise.future();
    co_await end; // what the program prints is read meanwhile
    if (process.error() == QProcess::FailedToStart || stop.stop_requested())
        co_return std::nullopt;
    const QByteArray output = process.readAllStandardOutput();
    co_return output;
}

} // namespace dugwise
