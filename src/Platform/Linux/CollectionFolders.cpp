// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/CollectionFolders.h"

#include "Platform/Linux/StoreFile.h"
#include "Utilities/Text.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <dirent.h>
#include <fcntl.h>
#include <glob.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <memory>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr qint64 kLargestConfiguration = qint64{1024} * 1024;
constexpr qint64 kLargestFile = qint64{64} * 1024 * 1024;
constexpr int kDeepest = 4; // folders within folders
constexpr qsizetype kMostFiles = 100'000;

/// A path of a configuration: "~" is the home folder, "$NAME" and "${NAME}" are variables of the
/// environment.
QString expanded(QString path, const QString &home)
{
    if (path == "~"_L1 || path.startsWith("~/"_L1))
        path.replace(0, 1, home);
    static const QRegularExpression kVariable(uR"(\$(?:\{(\w+)\}|(\w+)))"_s);
    qsizetype from = 0;
    for (auto match = kVariable.match(path); match.hasMatch();
         match = kVariable.match(path, from)) {
        const QString name = match.captured(1) + match.captured(2);
        const QString value =
            name == "HOME"_L1 ? home : qEnvironmentVariable(name.toUtf8().constData());
        path.replace(match.capturedStart(), match.capturedLength(), value);
        from = match.capturedStart() + value.size();
    }
    return path;
}

/// A value without its quotes, or without the comment behind it.
QByteArray unquoted(const QByteArray &value)
{
    if (value.startsWith('"') || value.startsWith('\'')) {
        const qsizetype end = value.indexOf(value.front(), 1);
        return end < 0 ? value : value.sliced(1, end - 1);
    }
    const qsizetype comment = value.indexOf('#');
    const bool isComment = comment > 0 && (value[comment - 1] == ' ' || value[comment - 1] == '\t');
    return isComment ? value.first(comment).trimmed() : value;
}

/// The folders that a path with wild cards stands for; a path without them as it is.
QStringList matching(const QString &path)
{
    if (!path.contains(u'*') && !path.contains(u'?'))
        return {path};
    glob_t found = {};
    QStringList paths;
    // NOLINTNEXTLINE(concurrency-mt-unsafe): but for users' names and GLOB_ALTDIRFUNC it is safe
    if (::glob(QFile::encodeName(path).constData(), GLOB_ONLYDIR | GLOB_NOESCAPE, nullptr, &found)
        == 0) {
        for (std::size_t i = 0; i < found.gl_pathc; ++i)
            paths.append(QFile::decodeName(found.gl_pathv[i]));
    }
    ::globfree(&found);
    return paths;
}

/// The paths in a section of khal's or khard's configuration (ConfigObj): "path = ..." below
/// "[[...]]" below "[section]". Of one with wild cards, what they stand for.
QStringList
configuredFolders(const QString &configuration, QByteArrayView section, const QString &home)
{
    QStringList paths;
    bool isInSection = false;
    const auto text = readStoreFile(configuration, kLargestConfiguration).value_or(QByteArray());
    for (const QByteArray &whole : text.split('\n')) {
        const QByteArray line = whole.trimmed();
        if (line.startsWith('[') && !line.startsWith("[["))
            isInSection = line.sliced(1).split(']').constFirst().trimmed() == section;
        const qsizetype equals = line.indexOf('=');
        if (!isInSection || equals < 0 || line.first(equals).trimmed() != "path")
            continue;
        const QByteArray value = unquoted(line.sliced(equals + 1).trimmed());
        const QString path = expanded(toQString(view(value)), home);
        if (path.startsWith(u'/'))
            paths += matching(path);
    }
    return paths;
}

QStringList existing(const QStringList &paths)
{
    QStringList folders;
    QSet<QString> seen;
    for (const QString &path : paths) {
        const QString canonical = QFileInfo(path).canonicalFilePath();
        if (canonical.isEmpty() || seen.contains(canonical) || !QFileInfo(canonical).isDir())
            continue;
        seen.insert(canonical);
        folders.append(QDir::cleanPath(path));
    }
    return folders;
}

/// By what a change of a file is seen.
QByteArray stateOf(const struct stat &facts)
{
    const std::array<qint64, 4> state{facts.st_size,
                                      facts.st_mtim.tv_sec,
                                      facts.st_mtim.tv_nsec,
                                      static_cast<qint64>(facts.st_ino)};
    return {reinterpret_cast<const char *>(state.data()), sizeof state};
}

struct Closer
{
    void operator()(DIR *folder) const { ::closedir(folder); }
};

/// Lists a folder's files, and then those of the folders in it.
class Walk
{
public:
    Walk(QByteArray suffix, QDeadlineTimer deadline)
        : m_suffix(std::move(suffix))
        , m_deadline(deadline)
    {}

    void visit(const QByteArray &path, int depth)
    {
        const std::unique_ptr<DIR, Closer> folder(::opendir(path.constData()));
        if (!folder || depth > kDeepest || m_deadline.hasExpired())
            return;
        const int descriptor = ::dirfd(folder.get());
        QByteArrayList files;
        QByteArrayList folders;
        // NOLINTNEXTLINE(concurrency-mt-unsafe): nobody else has this one open
        while (const dirent *const entry = ::readdir(folder.get())) {
            const QByteArray name(static_cast<const char *>(entry->d_name));
            if (name.startsWith('.'))
                continue;
            if (name.endsWith(m_suffix))
                files.append(name);
            else if (entry->d_type == DT_DIR || entry->d_type == DT_UNKNOWN)
                folders.append(name);
        }
        std::ranges::sort(files);
        std::ranges::sort(folders);
        for (const QByteArray &name : files)
            addFile(descriptor, path, name);
        for (const QByteArray &name : folders) {
            struct stat facts = {};
            if (::fstatat(descriptor, name.constData(), &facts, AT_SYMLINK_NOFOLLOW) == 0
                && S_ISDIR(facts.st_mode))
                visit(path + '/' + name, depth + 1);
        }
    }
    [[nodiscard]] const QList<StoreDocument> &found() const { return m_found; }

private:
    void addFile(int folder, const QByteArray &folderPath, const QByteArray &name)
    {
        struct stat facts = {};
        if (m_found.size() >= kMostFiles || m_deadline.hasExpired()
            || ::fstatat(folder, name.constData(), &facts, AT_SYMLINK_NOFOLLOW) != 0
            || !S_ISREG(facts.st_mode))
            return;
        const auto identity = std::pair(quint64{facts.st_dev}, quint64{facts.st_ino});
        if (m_seen.contains(identity))
            return;
        m_seen.insert(identity);
        const QString path = QFile::decodeName(folderPath + '/' + name);
        m_found.append({
            .name = path,
            .state = stateOf(facts),
            .text = [path] { return readStoreFile(path, kLargestFile); },
        });
    }

    QByteArray m_suffix;
    QDeadlineTimer m_deadline;
    QSet<std::pair<quint64, quint64>> m_seen; ///< file systems and numbers of files
    QList<StoreDocument> m_found;
};

} // namespace

QStringList calendarFolders(const StandardFolders &folders)
{
    const QString configuration = folders.configHome() + "/khal/config"_L1;
    const QStringList usual{folders.dataHome() + "/calendars"_L1, folders.home + "/.calendars"_L1};
    return existing(usual + configuredFolders(configuration, "calendars", folders.home));
}

QStringList contactFolders(const StandardFolders &folders)
{
    const QString configuration = folders.configHome() + "/khard/khard.conf"_L1;
    const QStringList usual{folders.dataHome() + "/contacts"_L1, folders.home + "/.contacts"_L1};
    return existing(usual + configuredFolders(configuration, "addressbooks", folders.home));
}

QStringList folderDescriptions(const QStringList &paths, const QString &home)
{
    QStringList descriptions;
    for (const QString &path : paths) {
        const bool isInHome = path.startsWith(home + u'/');
        descriptions.append("folder "_L1 + (isInHome ? u'~' + path.sliced(home.size()) : path));
    }
    return descriptions;
}

QList<StoreDocument>
collectionFiles(const QStringList &roots, const QByteArray &suffix, const QDeadlineTimer &deadline)
{
    Walk walk(suffix, deadline);
    for (const QString &root : roots)
        walk.visit(QFile::encodeName(root), 0);
    return walk.found();
}

} // namespace dugwise
