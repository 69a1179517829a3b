// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/BrowserProfiles.h"

#include "Platform/Linux/StoreFile.h"
#include "Utilities/Text.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr qint64 kLargestIni = qint64{1024} * 1024;

/// The folders in a folder, in the order of their names.
QStringList foldersIn(const QString &folder)
{
    QStringList paths;
    const QDir::Filters filters = QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot;
    for (const QString &name : QDir(folder).entryList(filters, QDir::Name))
        paths.append(folder + u'/' + name);
    return paths;
}

/// The files of this name in the folders, each once, whatever links lead to it.
QStringList existingFiles(const QStringList &folders, QLatin1StringView name)
{
    QStringList files;
    for (const QString &folder : folders) {
        const QString path = QFileInfo(folder + u'/' + name).canonicalFilePath();
        if (!path.isEmpty() && !files.contains(path))
            files.append(path);
    }
    return files;
}

/// The folders that a profiles.ini names, below `root` or elsewhere.
QStringList foldersOfIni(const QString &root)
{
    constexpr QByteArrayView kKey("Path=");
    QStringList folders;
    const QByteArray ini =
        readStoreFile(root + "/profiles.ini"_L1, kLargestIni).value_or(QByteArray());
    for (const QByteArray &line : ini.split('\n')) {
        if (!line.startsWith(kKey))
            continue;
        const QByteArray value = line.sliced(kKey.size()).trimmed();
        const QString path = toQString(view(value));
        folders.append(path.startsWith(u'/') ? path : root + u'/' + path);
    }
    return folders;
}

} // namespace

QStringList profileFolders(const QStringList &roots)
{
    QStringList profiles;
    for (const QString &root : roots)
        profiles += foldersIn(root) + foldersOfIni(root);
    return profiles;
}

QStringList firefoxDatabases(const StandardFolders &folders)
{
    const QString flatpaks = folders.home + "/.var/app"_L1;
    const QStringList roots{
        folders.home + "/.mozilla/firefox"_L1,
        folders.configHome() + "/mozilla/firefox"_L1, // since Firefox 147
        folders.home + "/snap/firefox/common/.mozilla/firefox"_L1,
        flatpaks + "/org.mozilla.firefox/.mozilla/firefox"_L1,
        flatpaks + "/org.mozilla.firefox/config/mozilla/firefox"_L1,
        folders.home + "/.librewolf"_L1,
        flatpaks + "/io.gitlab.librewolf-community/.librewolf"_L1,
    };
    return existingFiles(profileFolders(roots), "places.sqlite"_L1);
}

QStringList chromiumDatabases(const StandardFolders &folders)
{
    static const QStringList kNames{u"chromium"_s,
                                    u"google-chrome"_s,
                                    u"google-chrome-beta"_s,
                                    u"google-chrome-unstable"_s,
                                    u"BraveSoftware/Brave-Browser"_s,
                                    u"BraveSoftware/Brave-Browser-Beta"_s,
                                    u"BraveSoftware/Brave-Browser-Nightly"_s,
                                    u"vivaldi"_s,
                                    u"vivaldi-snapshot"_s,
                                    u"opera"_s,
                                    u"opera-beta"_s,
                                    u"opera-developer"_s,
                                    u"microsoft-edge"_s,
                                    u"microsoft-edge-beta"_s,
                                    u"microsoft-edge-dev"_s};
    QStringList configs{folders.configHome(), folders.home + "/snap/chromium/common"_L1};
    for (const QString &flatpak : foldersIn(folders.home + "/.var/app"_L1))
        configs.append(flatpak + "/config"_L1);
    for (const QString &snap : foldersIn(folders.home + "/snap"_L1))
        configs.append(snap + "/current/.config"_L1);
    QStringList profiles;
    for (const QString &config : std::as_const(configs)) {
        for (const QString &name : kNames) {
            const QString root = config + u'/' + name;
            profiles.append(root); // Opera has no folders of profiles
            profiles += foldersIn(root);
        }
    }
    return existingFiles(profiles, "History"_L1);
}

QStringList thunderbirdProfiles(const StandardFolders &folders)
{
    const QStringList roots{
        folders.home + "/.thunderbird"_L1,
        folders.home + "/snap/thunderbird/common/.thunderbird"_L1,
        folders.home + "/.var/app/org.mozilla.Thunderbird/.thunderbird"_L1,
    };
    QStringList profiles;
    for (const QString &root : roots) {
        for (const QString &folder : foldersIn(root) + foldersOfIni(root)) {
            const QString path = QFileInfo(folder).canonicalFilePath();
            if (!path.isEmpty() && !profiles.contains(path))
                profiles.append(path);
        }
    }
    return profiles;
}

} // namespace dugwise
