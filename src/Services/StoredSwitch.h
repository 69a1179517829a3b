// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/UserDefaults.h"

#include <QLatin1StringView>

namespace dugwise {

/// A switch that the person sets, kept in the user defaults under its key.
struct StoredSwitch
{
    QLatin1StringView key;
    bool byDefault; ///< as long as it was never set

    [[nodiscard]] bool isOn(const UserDefaults &defaults) const
    {
        return defaults.boolean(key).value_or(byDefault);
    }
    void set(UserDefaults &defaults, bool isOn) const { defaults.setBoolean(key, isOn); }
};

inline constexpr StoredSwitch kEnableLocalIndexing{QLatin1StringView("enableLocalIndexing"), true};
inline constexpr StoredSwitch kIncludeHiddenFiles{QLatin1StringView("includeHiddenFiles"), false};
inline constexpr StoredSwitch kIncludeScreenshots{QLatin1StringView("includeScreenshots"), true};
inline constexpr StoredSwitch kIncludePDFs{QLatin1StringView("includePDFs"), true};
/// Nothing is synchronised: the switch is only kept.
inline constexpr StoredSwitch kCloudSyncEnabled{QLatin1StringView("cloudSyncEnabled"), false};

} // namespace dugwise
