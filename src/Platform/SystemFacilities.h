// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace dugwise {

struct Platform;

/// Gives `platform` what this system has, beyond what every platform is made with. Only the entry
/// asks for it: what is made without it starts no programs and asks no services.
void addSystemFacilities(Platform &platform);

} // namespace dugwise
