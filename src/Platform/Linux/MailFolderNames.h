// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringView>

namespace dugwise {

/// Whether a mail folder, by the name of its file or folder on disk, holds what is no mail of
/// anybody's any more or not yet: the deleted, junk, drafts, templates and what waits to be sent.
/// Knows the names that mail programs and servers give these in some languages.
[[nodiscard]] bool isLeftOutMailFolder(QStringView name);

} // namespace dugwise
