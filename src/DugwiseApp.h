// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/AppState.h"
#include "Platform/Platform.h"
#include "Services/FileIndexer.h"
#include "Services/NetworkMonitor.h"

#include <optional>

namespace dugwise {

/// The application's long-lived objects, made once, in this order: the last when it is first asked
/// for, so that a run that does not ask watches nothing.
class DugwiseApp
{
public:
    explicit DugwiseApp(Platform &platform)
        : m_platform(platform)
        , m_appState(platform, AppServices(platform))
        , m_fileIndexer(platform)
    {}

    [[nodiscard]] AppState &appState() { return m_appState; }
    [[nodiscard]] FileIndexer &fileIndexer() { return m_fileIndexer; }
    [[nodiscard]] NetworkMonitor &networkMonitor()
    {
        if (!m_networkMonitor)
            m_networkMonitor.emplace(m_platform.networkPathMonitor.get());
        return *m_networkMonitor;
    }

private:
    Platform &m_platform;
    AppState m_appState;
    FileIndexer m_fileIndexer;
    std::optional<NetworkMonitor> m_networkMonitor;
};

} // namespace dugwise
