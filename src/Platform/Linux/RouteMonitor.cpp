// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/RouteMonitor.h"

#include "Platform/Linux/Netlink.h"
#include "Platform/Linux/RoutedPath.h"

#include <linux/rtnetlink.h>

#include <chrono>

using namespace std::chrono_literals;

namespace dugwise {

namespace {

/// Addresses are among them because the routes that go with one go without a word.
constexpr quint32 kGroups =
    RTMGRP_LINK | RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE | RTMGRP_IPV4_IFADDR | RTMGRP_IPV6_IFADDR;

/// One change comes as several messages, and some of its effects come after them.
constexpr auto kBurst = 20ms;

} // namespace

RouteMonitor::RouteMonitor(QString sysfs)
    : m_sysfs(std::move(sysfs))
{
    m_timer.setSingleShot(true);
    m_timer.callOnTimeout([this] { update(); });
}

void RouteMonitor::start(UpdateHandler updateHandler)
{
    cancel();
    m_updateHandler = std::move(updateHandler);
    m_timer.start(0);
    m_socket = Netlink::open(kGroups);
    if (!m_socket)
        return;
    m_changes = std::make_unique<QSocketNotifier>(m_socket.get(), QSocketNotifier::Read);
    QObject::connect(m_changes.get(), &QSocketNotifier::activated, &m_timer, [this] {
        if (Netlink::drain(m_socket) && !m_timer.isActive())
            m_timer.start(kBurst);
    });
}

void RouteMonitor::cancel()
{
    m_timer.stop();
    m_changes.reset();
    m_socket = FileDescriptor();
    m_updateHandler = {};
    m_path.reset();
}

void RouteMonitor::update()
{
    const NetworkPath path = currentPath(m_sysfs);
    if (m_path == path)
        return;
    m_path = path;
    const UpdateHandler handler = m_updateHandler; // it may cancel
    handler(path);
}

} // namespace dugwise
