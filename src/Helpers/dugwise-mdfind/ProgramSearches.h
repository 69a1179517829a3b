// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Helpers/dugwise-mdfind/SearchRequest.h"

#include <QCoroTask>
#include <QStringList>

#include <stop_token>

/// The services that are asked through programs of theirs. Each gives its paths in its own order,
/// none when it is not there, and none when `stop` is requested on this thread first.
namespace dugwise {

/// What KDE's service has; baloosearch reads its index without the service.
[[nodiscard]] QCoro::Task<QStringList> balooPaths(SearchRequest request, std::stop_token stop);

/// What plocate has, by name only: the database of the machine and those of LOCATE_PATH, without
/// the files that are gone since it was made.
[[nodiscard]] QCoro::Task<QStringList> plocatePaths(SearchRequest request, std::stop_token stop);

} // namespace dugwise
