// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Helpers/dugwise-mdfind/SearchRequest.h"

#include <QCoroTask>
#include <QStringList>

#include <stop_token>

namespace dugwise {

/// The paths that GNOME's service (Tracker 3, now called LocalSearch) has for the request, best
/// first. Asks the service where it runs and else reads its index; it is never started. The query
/// runs in a thread of its own, which is left to itself when `stop` is requested on this thread.
[[nodiscard]] QCoro::Task<QStringList> trackerPaths(SearchRequest request, std::stop_token stop);

} // namespace dugwise
