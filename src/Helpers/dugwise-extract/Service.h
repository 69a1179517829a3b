// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// What the program is started for. Each makes its libraries ready, confines the process, and then
/// answers requests until there are no more; false when it cannot be confined.
namespace dugwise {

[[nodiscard]] bool serveDocuments();
[[nodiscard]] bool serveMail();

} // namespace dugwise
