// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/SQLiteDatabase.h"

#include <QByteArray>
#include <QList>

#include <functional>

namespace dugwise {

/// By what a change of a store's file is seen.
struct StoreFileState
{
    QString path;
    bool exists = false; ///< as a regular file that may be read
    qint64 size = 0;     ///< bytes
    qint64 modified = 0; ///< nanoseconds since 1970
    quint64 inode = 0;
    /// The first 32 bytes, at most: what is written through a mapping shows late in `modified`.
    QByteArray head;

    bool operator==(const StoreFileState &) const = default;
};

[[nodiscard]] StoreFileState storeFileState(const QString &path);

/// The states of a database and of the logs beside it, in the order database, write-ahead log,
/// rollback journal.
[[nodiscard]] QList<StoreFileState> databaseState(const QString &path);

/// The whole of a regular file; absent where it cannot be read or is larger than `most` bytes.
[[nodiscard]] std::optional<QByteArray> readStoreFile(const QString &path, qint64 most);

/// Opens a private copy of a database and its logs, which a running program may have locked: the
/// original is neither locked nor written. The copy is made in `cacheFolder` and has no name any
/// more once it is open; what a program that died before left there is removed first. Not readable
/// where it cannot be copied, or not before a stop or the deadline.
[[nodiscard]] SQLiteDatabase
openDatabaseCopy(const QString &path,
                 const QString &cacheFolder,
                 const std::stop_token &stop,
                 QDeadlineTimer deadline = QDeadlineTimer(QDeadlineTimer::Forever));

/// Hands a database to `read`: where it lies, if its writer has left nothing in a log beside it,
/// else as openDatabaseCopy() gives it. When it was written while it was read where it lies, a copy
/// is handed to a second call, which alone counts. No call where there is no such file. At the
/// deadline, copying and reading fail.
void readDatabase(const QString &path,
                  const QString &cacheFolder,
                  const std::function<void(SQLiteDatabase &database)> &read,
                  QDeadlineTimer deadline = QDeadlineTimer(QDeadlineTimer::Forever));

} // namespace dugwise
