// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/StoreFile.h"

#include "Platform/FileDescriptor.h"
#include "Platform/StandardFolders.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/sendfile.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr int kHead = 32; // the header of a write-ahead log, https://sqlite.org/fileformat2.html
constexpr qint64 kLargestDatabase = qint64{2} * 1024 * 1024 * 1024;
constexpr qint64 kPiece = qint64{1024} * 1024; // bytes copied between two looks at a stop
constexpr int kAttempts = 3;

FileDescriptor openStoreFile(const QString &path, struct stat &facts)
{
    FileDescriptor file(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file || ::fstat(file.get(), &facts) != 0 || !S_ISREG(facts.st_mode))
        return {};
    return file;
}

/// Whether a copy that was made between these states holds what its writer had finished. A
/// write-ahead log may have grown: what is behind its last whole change is not read.
bool isUndisturbed(const QList<StoreFileState> &before, const QList<StoreFileState> &after)
{
    return before[0] == after[0] && before[1].head == after[1].head && before[2] == after[2];
}

/// Copies what the file had when its state was taken.
template <typename IsOver>
bool copyFile(const StoreFileState &file, const QString &copy, const IsOver &isOver)
{
    struct stat facts = {};
    const FileDescriptor from = openStoreFile(file.path, facts);
    const FileDescriptor to(::open(QFile::encodeName(copy).constData(),
                                   O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                                   S_IRUSR | S_IWUSR));
    qint64 left = file.size;
    while (from && to && left > 0 && !isOver()) {
        const auto piece = static_cast<std::size_t>(std::min(left, kPiece));
        const ssize_t size = ::sendfile(to.get(), from.get(), nullptr, piece);
        if (size <= 0)
            break;
        left -= size;
    }
    return from && to && left == 0;
}

template <typename IsOver>
bool copyFiles(const QList<StoreFileState> &files, const QString &copy, const IsOver &isOver)
{
    const QString original = files.first().path;
    for (const StoreFileState &file : files) {
        if (file.exists && !copyFile(file, copy + file.path.sliced(original.size()), isOver))
            return false;
    }
    return true;
}

/// Marks the folder as in use for as long as the descriptor lives; an invalid one where it is in
/// use already. The system drops the mark when the process dies (flock(2)).
FileDescriptor inUse(const QString &folder)
{
    FileDescriptor held(::open(QFile::encodeName(folder).constData(),
                               O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!held || ::flock(held.get(), LOCK_EX | LOCK_NB) != 0)
        return {};
    return held;
}

/// Removes the copies of programs that died over them.
void removeAbandonedCopies(const QString &cacheFolder)
{
    const QDir cache(cacheFolder);
    for (const QString &name : cache.entryList({u"store-*"_s}, QDir::Dirs | QDir::NoSymLinks)) {
        const QString folder = cache.filePath(name);
        if (const FileDescriptor held = inUse(folder))
            QDir(folder).removeRecursively();
    }
}

} // namespace

StoreFileState storeFileState(const QString &path)
{
    struct stat facts = {};
    const FileDescriptor file = openStoreFile(path, facts);
    if (!file)
        return {.path = path};
    QByteArray head(kHead, '\0');
    head.resize(std::max<ssize_t>(0, ::pread(file.get(), head.data(), kHead, 0)));
    return {
        .path = path,
        .exists = true,
        .size = facts.st_size,
        .modified = facts.st_mtim.tv_sec * 1'000'000'000 + facts.st_mtim.tv_nsec,
        .inode = facts.st_ino,
        .head = head,
    };
}

QList<StoreFileState> databaseState(const QString &path)
{
    return {storeFileState(path),
            storeFileState(path + "-wal"_L1),
            storeFileState(path + "-journal"_L1)};
}

std::optional<QByteArray> readStoreFile(const QString &path, qint64 most)
{
    struct stat facts = {};
    const FileDescriptor descriptor = openStoreFile(path, facts);
    QFile file;
    if (!descriptor || facts.st_size > most || !file.open(descriptor.get(), QFile::ReadOnly))
        return std::nullopt;
    return file.read(facts.st_size); // room is made for as much as is asked for
}

SQLiteDatabase openDatabaseCopy(const QString &path,
                                const QString &cacheFolder,
                                const std::stop_token &stop,
                                QDeadlineTimer deadline)
{
    const auto isOver = [&] { return stop.stop_requested() || deadline.hasExpired(); };
    makePrivateFolder(cacheFolder);
    removeAbandonedCopies(cacheFolder);
    for (int attempt = 0; attempt < kAttempts && !isOver(); ++attempt) {
        const QList<StoreFileState> before = databaseState(path);
        if (!before[0].exists || before[0].size + before[1].size > kLargestDatabase)
            break;
        // Made with mkdtemp(3): for its owner only.
        QTemporaryDir folder(cacheFolder + "/store-XXXXXX"_L1);
        if (!folder.isValid())
            break;
        const FileDescriptor held = inUse(folder.path());
        const QString copy = folder.path() + "/copy"_L1;
        // Else the store was written or closed meanwhile, or another took the folder for abandoned.
        if (!held || !copyFiles(before, copy, isOver)
            || !isUndisturbed(before, databaseState(path)))
            continue;
        SQLiteDatabase database(copy, stop);
        database.setDeadline(deadline);
        // SQLite has its files open from here on, and the folder goes.
        if (database.isReadable())
            return database;
        break;
    }
    return {};
}

void readDatabase(const QString &path,
                  const QString &cacheFolder,
                  const std::function<void(SQLiteDatabase &database)> &read,
                  QDeadlineTimer deadline)
{
    const QList<StoreFileState> before = databaseState(path);
    if (!before[0].exists)
        return;
    if (before[1].size == 0 && before[2].size == 0) {
        SQLiteDatabase original = SQLiteDatabase::inPlace(path, {});
        original.setDeadline(deadline);
        read(original);
        if (databaseState(path) == before)
            return;
    }
    SQLiteDatabase copy = openDatabaseCopy(path, cacheFolder, {}, deadline);
    read(copy);
}

} // namespace dugwise
