// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/WindowServer.h"

#include <QLocalSocket>
#include <QTimer>

namespace dugwise {

WindowServer::WindowServer(const QString &socketPath, std::chrono::milliseconds patience)
    : m_patience(patience)
{
    if (socketPath.isEmpty())
        return;
    connect(&m_server, &QLocalServer::newConnection, this, &WindowServer::accept);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(socketPath);
    m_server.listen(socketPath);
}

void WindowServer::accept()
{
    while (QLocalSocket *const socket = m_server.nextPendingConnection()) {
        // The sockets are the server's children; one too many is told to come back later.
        if (m_server.findChildren<QLocalSocket *>(Qt::FindDirectChildrenOnly).size()
            > kMostConnections) {
            delete socket;
            continue;
        }
        socket->setReadBufferSize(WindowMessage::kLongestLine);
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { read(*socket); });
        QTimer::singleShot(m_patience, socket, &QLocalSocket::abort);
    }
}

void WindowServer::read(QLocalSocket &socket)
{
    if (!socket.canReadLine()) {
        if (socket.bytesAvailable() >= WindowMessage::kLongestLine)
            socket.abort();
        return;
    }
    const auto message = WindowMessage::fromLine(socket.readLine());
    if (!message) {
        socket.abort();
        return;
    }
    socket.disconnect(this); // one message each
    Q_EMIT received(*message);
    socket.write("taken\n");
    socket.disconnectFromServer();
}

} // namespace dugwise
