// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/StoreFacts.h"

namespace dugwise {

/// What the extended attributes of a file say about its download: user.xdg.origin.url and
/// user.xdg.referrer.url, as curl, wget and WebKit set them
/// (https://www.freedesktop.org/wiki/CommonExtendedAttributes). Absent without an origin. The
/// attributes of attachments (user.xdg.origin.email.*) hold no address and are not read.
[[nodiscard]] std::optional<Download> downloadAttributes(const QString &path);

} // namespace dugwise
