// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/StandardFolders.h"

#include "Utilities/FilePath.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace dugwise {

StandardFolders StandardFolders::ofUser()
{
    const QString home = QDir::homePath();
    const auto userFolder = [&](QStandardPaths::StandardLocation location) {
        const QString path = QDir::cleanPath(QStandardPaths::writableLocation(location));
        return path == home ? QString() : path;
    };
    const auto own = [](QStandardPaths::StandardLocation location) {
        return QStandardPaths::writableLocation(location) + "/Dugwise"_L1;
    };
    return {
        .home = home,
        .documents = userFolder(QStandardPaths::DocumentsLocation),
        .downloads = userFolder(QStandardPaths::DownloadLocation),
        .desktop = userFolder(QStandardPaths::DesktopLocation),
        .data = own(QStandardPaths::GenericDataLocation),
        .config = own(QStandardPaths::GenericConfigLocation),
        .cache = own(QStandardPaths::GenericCacheLocation),
    };
}

QString StandardFolders::dataHome() const
{
    return FilePath::folder(data);
}

QString StandardFolders::configHome() const
{
    return FilePath::folder(config);
}

void makePrivateFolder(const QString &folder)
{
    QDir().mkpath(QFileInfo(folder).path());
    ::mkdir(QFile::encodeName(folder).constData(), S_IRWXU);
}

} // namespace dugwise
