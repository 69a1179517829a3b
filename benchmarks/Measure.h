// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFile>
#include <QList>

#include <chrono>
#include <cstdio>

/// What the benchmarks share. None of them judges a time: they print figures.
namespace dugwise::bench {

class Stopwatch
{
public:
    [[nodiscard]] double seconds() const
    {
        return std::chrono::duration<double>(Clock::now() - m_start).count();
    }

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point m_start = Clock::now();
};

/// A line of /proc/self/status in bytes, such as "VmRSS" or "VmHWM" (the largest so far).
inline double memory(const QByteArray &name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QFile::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(name + ':'))
            return line.simplified().split(' ').value(1).toDouble() * 1024;
    }
    return 0;
}

/// Makes "VmHWM" begin anew at what is used now.
inline void forgetPeak()
{
    QFile references(QStringLiteral("/proc/self/clear_refs"));
    if (references.open(QFile::WriteOnly))
        references.write("5");
}

constexpr double kMegabyte = 1e6;

} // namespace dugwise::bench
