// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCryptographicHash>
#include <QDateTime>
#include <QDirIterator>
#include <QFile>

namespace dugwise::test {

/// Of all that is in a folder: names, contents and times of change. Another when any of it is
/// another.
inline QByteArray fingerprint(const QString &folder)
{
    QStringList paths;
    QDirIterator entries(folder,
                         QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext())
        paths.append(entries.next());
    paths.sort();
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString &path : std::as_const(paths)) {
        QFile file(path);
        hash.addData(path.toUtf8());
        if (!file.open(QFile::ReadOnly))
            continue; // a folder
        hash.addData(&file);
        hash.addData(
            QByteArray::number(file.fileTime(QFile::FileModificationTime).toMSecsSinceEpoch()));
    }
    return hash.result();
}

} // namespace dugwise::test
