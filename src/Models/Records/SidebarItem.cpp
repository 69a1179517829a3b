// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/Records/SidebarItem.h"

using namespace Qt::StringLiterals;

namespace dugwise {

QString rawValue(SidebarItem item)
{
    switch (item) {
    case SidebarItem::home:
        return u"Home"_s;
    case SidebarItem::settings:
        return u"Settings"_s;
    case SidebarItem::privacy:
        return u"Privacy"_s;
    case SidebarItem::about:
        return u"About"_s;
    }
    Q_UNREACHABLE();
}

} // namespace dugwise
