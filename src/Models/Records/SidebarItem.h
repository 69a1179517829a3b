// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>

namespace dugwise {

/// The destinations of the sidebar.
enum class SidebarItem {
    home,
    settings,
    privacy,
    about,
};

/// Every destination, in declaration order.
inline constexpr std::array kAllSidebarItems{
    SidebarItem::home, SidebarItem::settings, SidebarItem::privacy, SidebarItem::about};

/// The label that people see.
[[nodiscard]] QString rawValue(SidebarItem item);

} // namespace dugwise
