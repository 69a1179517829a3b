// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/FolderBookmark.h"

#include "Platform/FileAttributes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <dirent.h>

#include <cerrno>
#include <cstring>
#include <deque>
#include <memory>

using namespace Qt::StringLiterals;

namespace dugwise::FolderBookmark {

namespace {

constexpr auto kPathKey = "path"_L1;
constexpr auto kInodeKey = "inode"_L1; // as text: JSON numbers lose the last bits of 64
constexpr auto kBirthKey = "birth"_L1;

/// Folders that one search for a moved folder looks into.
constexpr int kMostFoldersSearched = 5'000;

struct Identity
{
    quint64 inode = 0;
    std::optional<Instant> birth;
};

bool isFolder(const QString &path, const Identity &identity)
{
    const auto attributes = fileAttributes(path);
    return attributes && attributes->isFolder && attributes->inode == identity.inode
           && attributes->createdDate == identity.birth;
}

struct FolderCloser
{
    void operator()(DIR *folder) const { ::closedir(folder); }
};

/// The file system that holds `folder`; absent when there is no such folder.
std::optional<quint64> deviceOf(const QString &folder)
{
    const auto attributes = fileAttributes(folder);
    return attributes && attributes->isFolder ? std::optional(attributes->device) : std::nullopt;
}

/// Looks below `start` on its own file system, nearest folders first; hidden folders (the trash is
/// one) are passed over.
QString findBelow(const QString &start, const Identity &identity, int &budget)
{
    const std::optional<quint64> device = deviceOf(start);
    std::deque<QString> waiting{start};
    while (!waiting.empty() && budget > 0) {
        const QString current = waiting.front();
        waiting.pop_front();
        --budget;
        if (deviceOf(current) != device)
            continue;
        const std::unique_ptr<DIR, FolderCloser> folder(
            ::opendir(QFile::encodeName(current).constData()));
        if (!folder)
            continue;
        // NOLINTNEXTLINE(concurrency-mt-unsafe): the folder was opened right here
        while (const dirent *entry = ::readdir(folder.get())) {
            if (entry->d_type != DT_DIR || entry->d_name[0] == '.')
                continue;
            QString path = current + u'/' + QFile::decodeName(entry->d_name);
            if (entry->d_ino == identity.inode && deviceOf(path) == device
                && isFolder(path, identity))
                return path;
            waiting.push_back(path);
        }
    }
    return {};
}

/// Looks around the old place in ever wider circles, up to the home folder or to where the file
/// system is mounted.
QString findMoved(const QString &oldPath, const Identity &identity)
{
    int budget = kMostFoldersSearched;
    QString around = QFileInfo(oldPath).path();
    while (!deviceOf(around))
        around = QFileInfo(around).path();
    const std::optional<quint64> device = deviceOf(around);
    while (budget > 0 && deviceOf(around) == device) {
        QString found = findBelow(around, identity, budget);
        if (!found.isEmpty() || around == QDir::homePath() || around == "/"_L1)
            return found;
        around = QFileInfo(around).path();
    }
    return {};
}

} // namespace

Outcome<QByteArray> create(const QString &folder)
{
    const auto attributes = fileAttributes(QFileInfo(folder).canonicalFilePath());
    if (!attributes || !attributes->isFolder)
        return Failure{"%1 is not a folder"_L1.arg(folder)};
    QJsonObject object{{kPathKey, folder}, {kInodeKey, QString::number(attributes->inode)}};
    if (attributes->createdDate)
        object.insert(kBirthKey, attributes->createdDate->seconds);
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QString path(const QByteArray &bookmark)
{
    return QJsonDocument::fromJson(bookmark).object().value(kPathKey).toString();
}

Outcome<QString> resolve(const QByteArray &bookmark)
{
    const QJsonObject object = QJsonDocument::fromJson(bookmark).object();
    QString path = object.value(kPathKey).toString();
    if (!QDir::isAbsolutePath(path))
        return Failure{u"the bookmark cannot be read"_s};
    Identity identity{object.value(kInodeKey).toString().toULongLong(), std::nullopt};
    if (object.contains(kBirthKey))
        identity.birth = Instant{object.value(kBirthKey).toDouble()};

    const QFileInfo atOldPath(path);
    if (isFolder(atOldPath.canonicalFilePath(), identity))
        return path;
    // Inode numbers are used again: without its birth a folder cannot be told from a later one.
    QString moved = identity.birth ? findMoved(path, identity) : QString();
    if (!moved.isEmpty())
        return moved;
    if (atOldPath.isDir())
        return path;
    return Failure{"%1 is not there any more"_L1.arg(path)};
}

} // namespace dugwise::FolderBookmark
