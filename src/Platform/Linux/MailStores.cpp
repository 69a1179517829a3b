// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MailStores.h"

#include "Platform/Linux/BrowserProfiles.h"
#include "Platform/Linux/MailFolderNames.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr int kDeepest = 16;
constexpr qsizetype kMostFolders = 10'000;

constexpr auto kThunderbird = "Thunderbird"_L1;

/// What lies beside mail folders, by the ends of names: indexes, filters, settings.
constexpr std::array kNoMail{".msf"_L1,
                             ".dat"_L1,
                             ".html"_L1,
                             ".json"_L1,
                             ".sqlite"_L1,
                             ".lock"_L1,
                             ".cmeta"_L1,
                             ".ev-summary"_L1,
                             ".ibex"_L1,
                             ".index"_L1,
                             ".data"_L1,
                             ".cache"_L1,
                             ".log"_L1,
                             ".txt"_L1,
                             "-wal"_L1,
                             "-shm"_L1,
                             ".db"_L1,
                             ".eml"_L1,
                             "~"_L1};

struct CloseFolder
{
    void operator()(DIR *folder) const { ::closedir(folder); }
};

bool isNumber(const QString &name) // a message of MH
{
    return std::ranges::all_of(name, [](QChar c) { return c.isDigit(); });
}

bool mayBeMbox(const QString &name)
{
    return !name.startsWith(u'.') && !isNumber(name)
           && std::ranges::none_of(kNoMail,
                                   [&](QLatin1StringView end) { return name.endsWith(end); });
}

/// Where it is none errno says why; 0 when it is something else.
bool isFolder(const QString &path)
{
    errno = 0;
    struct stat facts = {};
    return ::lstat(QFile::encodeName(path).constData(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

class FolderWalk
{
public:
    explicit FolderWalk(bool marksDeleted)
        : m_marksDeleted(marksDeleted)
    {}

    void walk(const QString &path, int depth = 0)
    {
        if (isFolder(path + "/cur"_L1))
            add(path, MailFolder::Kind::maildir);
        else if (errno != 0 && errno != ENOENT && errno != ENOTDIR)
            add(path, MailFolder::Kind::unreadable);
        const std::unique_ptr<DIR, CloseFolder> folder(
            ::opendir(QFile::encodeName(path).constData()));
        if (!folder && errno != ENOENT)
            add(path, MailFolder::Kind::unreadable);
        if (!folder || depth > kDeepest)
            return;
        for (;;) {
            errno = 0;
            // NOLINTNEXTLINE(concurrency-mt-unsafe): the stream is this function's own
            const dirent *const entry = ::readdir(folder.get());
            if (!entry && errno != 0)
                add(path, MailFolder::Kind::unreadable);
            if (!entry)
                return;
            const QString name = QFile::decodeName(entry->d_name);
            if (name == "."_L1 || name == ".."_L1 || isLeftOutMailFolder(name))
                continue;
            visit(path + u'/' + name, name, entry->d_type, depth);
        }
    }

    QList<MailFolder> found;

private:
    void visit(const QString &path, const QString &name, unsigned char type, int depth)
    {
        const bool isMessages = name == "cur"_L1 || name == "new"_L1 || name == "tmp"_L1;
        if (type == DT_DIR || (type == DT_UNKNOWN && isFolder(path))) {
            if (!isMessages)
                walk(path, depth + 1);
        } else if ((type == DT_REG || type == DT_UNKNOWN) && mayBeMbox(name)) {
            add(path, MailFolder::Kind::mbox);
        }
    }

    void add(const QString &path, MailFolder::Kind kind)
    {
        const bool marks = m_marksDeleted && kind == MailFolder::Kind::mbox;
        if (found.size() < kMostFolders)
            found.append({.path = path, .kind = kind, .marksDeleted = marks});
    }

    bool m_marksDeleted;
};

QStringList thunderbirdRoots(const StandardFolders &folders)
{
    QStringList roots;
    for (const QString &profile : thunderbirdProfiles(folders)) {
        for (const auto kind : {"/Mail"_L1, "/ImapMail"_L1})
            roots.append(profile + kind);
    }
    return roots;
}

QStringList kmailRoots(const StandardFolders &folders)
{
    QStringList roots{folders.dataHome() + "/local-mail"_L1,
                      folders.dataHome() + "/.local-mail.directory"_L1};
    for (const QString &name : QDir(folders.dataHome())
                                   .entryList({u"akonadi_maildir_resource_*"_s},
                                              QDir::Dirs | QDir::NoSymLinks,
                                              QDir::Name))
        roots.append(folders.dataHome() + u'/' + name);
    return roots;
}

} // namespace

QList<MailStore> mailStores(const StandardFolders &folders)
{
    QList<MailStore> stores;
    QStringList known;
    const auto add = [&](const QString &program, const QStringList &roots) {
        for (const QString &root : roots) {
            // A root may be a link; several may lead to one folder.
            const QString path = QFileInfo(root).canonicalFilePath();
            if (path.isEmpty() || known.contains(path) || !isFolder(path))
                continue;
            known.append(path);
            stores.append({program, path});
        }
    };
    add(kThunderbird, thunderbirdRoots(folders));
    add(u"Evolution"_s, {folders.dataHome() + "/evolution/mail/local"_L1});
    add(u"KMail"_s, kmailRoots(folders));
    add(u"Maildir and mbox"_s,
        {folders.home + "/Maildir"_L1,
         folders.home + "/Mail"_L1,
         folders.home + "/mail"_L1,
         folders.home + "/.mail"_L1,
         folders.dataHome() + "/mail"_L1});
    return stores;
}

QList<MailFolder> mailFolders(const MailStore &store)
{
    FolderWalk walk(store.program == kThunderbird);
    walk.walk(store.root);
    std::ranges::sort(walk.found, {}, &MailFolder::path);
    return walk.found;
}

QString mailPlaces()
{
    return u"mail of Thunderbird, local mail of Evolution or KMail, or Maildir and mbox folders in "
           "~/Maildir, ~/Mail, ~/mail, ~/.mail or ~/.local/share/mail"_s;
}

} // namespace dugwise
