// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

#include <QString>

#include <optional>

namespace dugwise {

/// What the file system tells about one file or folder (statx(2)); links are not followed.
struct FileAttributes
{
    bool isRegularFile = false;
    bool isFolder = false;
    qint64 size = 0;                    ///< bytes
    quint64 device = 0;                 ///< its file system, as long as that is mounted
    quint64 inode = 0;                  ///< unique on its file system
    std::optional<Instant> createdDate; ///< not every file system knows it
    Instant modifiedDate;
};

/// Absent when there is nothing at `path` or it must not be seen.
[[nodiscard]] std::optional<FileAttributes> fileAttributes(const QString &path);

} // namespace dugwise
