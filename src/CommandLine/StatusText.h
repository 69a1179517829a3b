// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace dugwise {

class AppState;
class FileIndexer;
class NetworkMonitor;
struct Platform;

/// What is indexed and which sources are on, or why they are not, over several lines.
[[nodiscard]] QString statusText(const Platform &platform,
                                 const AppState &appState,
                                 const FileIndexer &fileIndexer,
                                 const NetworkMonitor &networkMonitor);

} // namespace dugwise
