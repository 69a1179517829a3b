// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/StoreFacts.h"

namespace dugwise {

/// When files were last used as a recently-used.xbel has it: of each bookmark the newest of its
/// `visited` and `modified` dates and the `modified` dates of its applications (Desktop Bookmark
/// Specification). A date that cannot be read counts as absent, one without a zone as UTC; entries
/// before an error of syntax are kept; what a program keeps private is left out.
[[nodiscard]] StoreFacts readRecentlyUsed(const QByteArray &xbel, Instant now);

} // namespace dugwise
