// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/NetworkMonitor.h"

#include "Platform/NetworkPathMonitor.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

QString typeOf(const NetworkPath &path)
{
    using InterfaceType = NetworkPath::InterfaceType;
    if (path.usesInterfaceType(InterfaceType::wifi))
        return u"Wi-Fi"_s;
    if (path.usesInterfaceType(InterfaceType::cellular))
        return u"Cellular"_s;
    if (path.usesInterfaceType(InterfaceType::wiredEthernet))
        return u"Ethernet"_s;
    return u"None"_s;
}

} // namespace

NetworkMonitor::NetworkMonitor(NetworkPathMonitor *monitor, QObject *parent)
    : QObject(parent)
    , m_monitor(monitor)
    , m_connectionType(kUnknown)
{
    if (!m_monitor)
        return;
    m_monitor->start([self = QPointer(this)](const NetworkPath &path) {
        if (self)
            self->update(path);
    });
}

NetworkMonitor::~NetworkMonitor()
{
    if (m_monitor)
        m_monitor->cancel();
}

void NetworkMonitor::update(const NetworkPath &path)
{
    // Both before either is announced: whoever hears of one may read the other.
    const bool wasConnected = std::exchange(m_isConnected, path.isSatisfied);
    const QString previousType = std::exchange(m_connectionType, typeOf(path));
    if (m_isConnected != wasConnected)
        Q_EMIT isConnectedChanged();
    if (m_connectionType != previousType)
        Q_EMIT connectionTypeChanged();
}

} // namespace dugwise
