// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/ReplacedFile.h"

#include <QFile>

#include <unistd.h>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace dugwise {

Outcome<Success> replaceFile(const QString &path, const std::function<bool(QFile &file)> &write)
{
    // Always the same name, so that writers that are killed leave no more than one file behind,
    // which the next one takes up.
    QFile file(path + ".new"_L1);
    constexpr auto kPrivate = QFile::ReadOwner | QFile::WriteOwner;
    if (!file.open(QFile::WriteOnly | QFile::Truncate | QFile::Unbuffered, kPrivate)
        || !file.setPermissions(kPrivate))
        return Failure{file.errorString()};
    // On the disk before it takes the old file's place: a power cut must not leave half of it.
    const bool isReplaced = write(file) && ::fdatasync(file.handle()) == 0
                            && ::rename(QFile::encodeName(file.fileName()).constData(),
                                        QFile::encodeName(path).constData())
                                   == 0;
    if (isReplaced)
        return Success{};
    const QString error = file.error() == QFile::NoError ? qt_error_string() : file.errorString();
    file.remove();
    return Failure{error};
}

} // namespace dugwise
