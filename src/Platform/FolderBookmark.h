// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Utilities/Outcome.h"

#include <QByteArray>
#include <QString>

/// A folder as opaque bytes that find it again, also after it was renamed or moved within its
/// file system: its path, inode number and time of birth.
namespace dugwise::FolderBookmark {

[[nodiscard]] Outcome<QByteArray> create(const QString &folder);

/// The folder's path when the bookmark was made; empty for what is no bookmark.
[[nodiscard]] QString path(const QByteArray &bookmark);

/// The folder's path now. Looks through a bounded number of folders around the old place when the
/// folder is not there any more.
[[nodiscard]] Outcome<QString> resolve(const QByteArray &bookmark);

} // namespace dugwise::FolderBookmark
