// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/RouteTable.h"
#include "Platform/NetworkPathMonitor.h"

#include <functional>

namespace dugwise {

using LinkLookup = std::function<std::optional<NetworkLink>(int interface)>;

/// The path that the best default route with an interface that is up takes: of IPv4 first, then of
/// IPv6, the lowest metric. A tunnel counts as what carries it: the one interface over which single
/// places are reached through a gateway, as VPNs reach their other end, or else that of the next
/// default route.
[[nodiscard]] NetworkPath
routedPath(const QList<Route> &routes, const LinkLookup &linkOf, const QString &sysfs);

/// The path at this moment, asked of the kernel.
[[nodiscard]] NetworkPath currentPath(const QString &sysfs);

} // namespace dugwise
