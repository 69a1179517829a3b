// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/WindowMessage.h"

#include <QLocalServer>
#include <QObject>

#include <chrono>

namespace dugwise {

/// Takes messages of later starts for the window that is open, a connection each, and acknowledges
/// them with a line. What is no message, is too long or does not come closes its connection. Lives
/// on the UI thread.
class WindowServer : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMostConnections = 16;

    /// Listens at `socketPath`, which nobody else uses, in place of what may have been left there;
    /// with an empty one not at all. Only processes of this person can connect. A connection has
    /// `patience` to send its message.
    explicit WindowServer(const QString &socketPath,
                          std::chrono::milliseconds patience = std::chrono::seconds{5});

Q_SIGNALS:
    void received(const dugwise::WindowMessage &message);

private:
    void accept();
    void read(QLocalSocket &socket);

    QLocalServer m_server;
    std::chrono::milliseconds m_patience;
};

} // namespace dugwise
