// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/LoopbackServer.h"

#include <QCoroTask>
#include <QThreadPool>

#include <chrono>
#include <stop_token>

namespace dugwise {

/// Exchanges with web servers on this machine, each on a connection and a thread of its own.
/// Nothing else is ever connected to: there are no proxies here and no redirections. Lives on the
/// UI thread; what is under way when the object goes fails.
class LoopbackHttp
{
public:
    /// Longest body that is taken, in bytes.
    static constexpr qsizetype kMostBytes = qsizetype{2} * 1024 * 1024;

    LoopbackHttp();
    Q_DISABLE_COPY_MOVE(LoopbackHttp)
    ~LoopbackHttp();

    /// The body of an answer of the 2xx kind. Fails on any other, on one that is cut off or too
    /// long, and when it is not whole within `timeout`. `path` follows the server's own.
    [[nodiscard]] QCoro::Task<Outcome<QByteArray>>
    get(LoopbackServer server, QString path, std::chrono::milliseconds timeout);

    /// The same for what is sent: JSON, once.
    [[nodiscard]] QCoro::Task<Outcome<QByteArray>>
    post(LoopbackServer server, QString path, QByteArray json, std::chrono::milliseconds timeout);

private:
    QThreadPool m_workers;
    std::stop_source m_stop;
};

} // namespace dugwise
