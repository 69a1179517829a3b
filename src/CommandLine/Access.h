// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CommandLine/Arguments.h"

namespace dugwise {

struct Platform;

/// Carries out `dugwise access`, which ends with what the person has answered about each kind of
/// data; the exit status is 0, or 1 when that could not be written. Needs no index.
[[nodiscard]] int runAccess(Platform &platform, const Arguments &arguments);

} // namespace dugwise
