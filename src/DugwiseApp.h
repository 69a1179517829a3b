// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/AppState.h"
#include "Services/FileIndexer.h"

namespace dugwise {

struct Platform;

/// The application's long-lived objects, made once, in this order.
class DugwiseApp
{
public:
    explicit DugwiseApp(Platform &platform)
        : m_appState(platform, AppServices(platform))
        , m_fileIndexer(platform)
    {}

    [[nodiscard]] AppState &appState() { return m_appState; }
    [[nodiscard]] FileIndexer &fileIndexer() { return m_fileIndexer; }

private:
    AppState m_appState;
    FileIndexer m_fileIndexer;
};

} // namespace dugwise
