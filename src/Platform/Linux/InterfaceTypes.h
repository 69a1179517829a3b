// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/NetworkPathMonitor.h"

#include <QString>

namespace dugwise {

/// What a network interface is, by its folder in `sysfs` (the system's is /sys/class/net); a
/// bridge, a bond or a VLAN is what it stands on. Empty when the folder does not tell, as for a
/// tunnel: the routes may (networkPath()).
[[nodiscard]] NetworkPath::InterfaceTypes interfaceTypes(const QString &sysfs, const QString &name);

} // namespace dugwise
