// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/SampleFiles.h"

#include <csignal>

/// The parsers that run at the moment.
namespace dugwise::test {

/// The processes that were started from this one, also from its threads.
inline QList<pid_t> parsers()
{
    QList<pid_t> processes;
    for (const QString &thread :
         QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        for (const QByteArray &process :
             readFile(QStringLiteral("/proc/self/task/%1/children").arg(thread)).split(' ')) {
            if (const int number = process.toInt())
                processes.append(number);
        }
    }
    return processes;
}

inline void signalParsers(int signal)
{
    for (const pid_t process : parsers())
        ::kill(process, signal);
}

} // namespace dugwise::test
