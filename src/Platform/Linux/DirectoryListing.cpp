// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/DirectoryListing.h"

#include "Utilities/Text.h"

#include <QFile>
#include <QSet>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

struct FolderCloser
{
    void operator()(DIR *folder) const { ::closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, FolderCloser>;

struct Entry
{
    std::string name;
    bool isFolder = false;
};

/// The type of an entry; some file systems tell it only on asking again.
unsigned char typeOf(DIR *folder, const dirent &entry)
{
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type;
    struct stat facts = {};
    if (::fstatat(::dirfd(folder), entry.d_name, &facts, AT_SYMLINK_NOFOLLOW) != 0)
        return DT_UNKNOWN;
    return static_cast<unsigned char>(IFTODT(facts.st_mode));
}

bool isWanted(const char *name, HiddenNames hidden)
{
    if (hidden == HiddenNames::skipped)
        return name[0] != '.';
    const std::string_view text(name);
    return text != "." && text != "..";
}

std::vector<Entry> wantedEntries(DIR *folder, HiddenNames hidden)
{
    std::vector<Entry> entries;
    // NOLINTNEXTLINE(concurrency-mt-unsafe): each thread reads a folder that it opened itself
    while (const dirent *entry = ::readdir(folder)) {
        if (!isWanted(entry->d_name, hidden) || !QByteArrayView(entry->d_name).isValidUtf8())
            continue;
        const unsigned char type = typeOf(folder, *entry);
        if (type == DT_REG || type == DT_DIR)
            entries.push_back({entry->d_name, type == DT_DIR});
    }
    std::ranges::sort(entries, {}, &Entry::name);
    return entries;
}

OpenFolder open(const QString &path)
{
    return OpenFolder(::opendir(QFile::encodeName(path).constData()));
}

QString join(const QString &folderPath, const QString &name)
{
    return folderPath.endsWith(u'/') ? folderPath + name : folderPath + u'/' + name;
}

void append(QList<ListedFile> &files,
            const QString &folderPath,
            OpenFolder folder,
            const std::stop_token &stop,
            HiddenNames hidden)
{
    const std::vector<Entry> entries = wantedEntries(folder.get(), hidden);
    folder.reset(); // a deep tree must not use up the process's open files
    for (const Entry &entry : entries) {
        if (stop.stop_requested())
            return;
        const QString name = toQString(entry.name);
        if (!entry.isFolder) {
            files.append({folderPath, name});
        } else if (!isPackageName(name)) {
            const QString path = join(folderPath, name);
            if (OpenFolder below = open(path))
                append(files, path, std::move(below), stop, hidden);
        }
    }
}

} // namespace

QString ListedFile::path() const
{
    return join(folderPath, name);
}

std::optional<QList<ListedFile>>
listFolder(const QString &folder, const std::stop_token &stop, HiddenNames hidden)
{
    OpenFolder opened = open(folder);
    if (!opened)
        return std::nullopt;
    QList<ListedFile> files;
    append(files, folder, std::move(opened), stop, hidden);
    return files;
}

bool isPackageName(const QString &name)
{
    static const QStringList kList =
        u"app appex bundle framework plugin kext pkg mpkg prefpane qlgenerator saver mdimporter "
        u"wdgt "
        "xpc rtfd pages numbers key xcodeproj xcworkspace playground photoslibrary photolibrary "
        "aplibrary musiclibrary tvlibrary imovielibrary fcpbundle logicx band sparsebundle "
        "backupbundle scptd"_s.split(u' ');
    static const QSet<QString> kExtensions(kList.begin(), kList.end());
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 && kExtensions.contains(name.sliced(dot + 1).toLower());
}

} // namespace dugwise
