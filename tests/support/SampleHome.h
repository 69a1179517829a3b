// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Platform.h"

#include <QTemporaryDir>

namespace dugwise::test {

/// A home folder of its own with nothing in it, gone with the object, and a platform in it whose
/// log is kept for looking at.
struct SampleHome
{
    QTemporaryDir folder;
    QStringList log;
    Platform platform{StandardFolders{
        .home = folder.path(),
        .documents = folder.filePath(QStringLiteral("Documents")),
        .downloads = folder.filePath(QStringLiteral("Downloads")),
        .desktop = folder.filePath(QStringLiteral("Desktop")),
        .data = folder.filePath(QStringLiteral(".local/share/Dugwise")),
        .config = folder.filePath(QStringLiteral(".config/Dugwise")),
        .cache = folder.filePath(QStringLiteral(".cache/Dugwise")),
    }};

    SampleHome()
    {
        platform.log = [this](const QString &line) { log.append(line); };
    }
    [[nodiscard]] QString path(const QString &relative) const { return folder.filePath(relative); }
};

} // namespace dugwise::test
