// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/SampleFiles.h"

#include <sys/types.h>

#include <csignal>

namespace dugwise::test {

/// The processes that were started from this one, also from its threads.
inline QList<pid_t> childProcesses()
{
    QList<pid_t> processes;
    const QDir threads(QStringLiteral("/proc/self/task"));
    for (const QString &thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString children = threads.filePath(thread) + QStringLiteral("/children");
        for (const QByteArray &process : readFile(children).split(' ')) {
            if (const int number = process.toInt())
                processes.append(number);
        }
    }
    return processes;
}

inline void signalChildProcesses(int signal)
{
    for (const pid_t process : childProcesses())
        ::kill(process, signal);
}

} // namespace dugwise::test
