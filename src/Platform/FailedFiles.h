// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FileAttributes.h"

#include <QString>

namespace dugwise {

/// The files that the parser failed to read and is not to try again, each as long as its path,
/// size, time of modification and the parser's version stay the same: an empty file each in a
/// folder, named by a hash of these, and forgotten after a year. Callable from any thread.
class FailedFiles
{
public:
    FailedFiles(QString folder, QString parserVersion);

    [[nodiscard]] bool contains(const QString &path, const FileAttributes &attributes) const;
    void insert(const QString &path, const FileAttributes &attributes) const;
    void clear() const;

private:
    void removeOldMarkers() const;
    [[nodiscard]] QString markerPath(const QString &path, const FileAttributes &attributes) const;

    QString m_folder;
    QString m_parserVersion;
};

} // namespace dugwise
