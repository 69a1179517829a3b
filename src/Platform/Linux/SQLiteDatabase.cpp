// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/SQLiteDatabase.h"

#include "Utilities/Text.h"

#include <QFile>

#include <sqlite3.h>

#include <array>

namespace dugwise {

namespace {

constexpr int kLargestValue = 16 * 1024 * 1024; // bytes
constexpr int kStepsBetweenStops = 10'000;      // of SQLite's virtual machine

int isStopped(void *stop)
{
    return static_cast<const std::stop_token *>(stop)->stop_requested() ? 1 : 0;
}

void distrust(sqlite3 *database)
{
    constexpr std::array kSettings{
        std::pair{SQLITE_DBCONFIG_DEFENSIVE, 1},
        std::pair{SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
        std::pair{SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
        std::pair{SQLITE_DBCONFIG_ENABLE_VIEW, 0},
        std::pair{SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1},
    };
    for (const auto &[setting, value] : kSettings)
        sqlite3_db_config(database, setting, value, nullptr);
    sqlite3_limit(database, SQLITE_LIMIT_LENGTH, kLargestValue);
    sqlite3_limit(database, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_exec(database,
                 "PRAGMA query_only = ON; PRAGMA cell_size_check = ON; PRAGMA mmap_size = 0;"
                 "PRAGMA temp_store = MEMORY",
                 nullptr,
                 nullptr,
                 nullptr);
}

} // namespace

SQLiteStatement::SQLiteStatement(sqlite3_stmt *statement)
    : m_statement(statement)
{}

bool SQLiteStatement::step()
{
    return m_statement && sqlite3_step(m_statement.get()) == SQLITE_ROW;
}

std::optional<QString> SQLiteStatement::text(int column) const
{
    const void *const bytes = sqlite3_column_text(m_statement.get(), column);
    const int size = sqlite3_column_bytes(m_statement.get(), column);
    if (!bytes)
        return std::nullopt;
    const QByteArrayView utf8(static_cast<const char *>(bytes), size);
    if (!utf8.isValidUtf8())
        return std::nullopt;
    return toQString({utf8.data(), static_cast<std::size_t>(utf8.size())});
}

qint64 SQLiteStatement::integer(int column) const
{
    return sqlite3_column_int64(m_statement.get(), column);
}

double SQLiteStatement::real(int column) const
{
    return sqlite3_column_double(m_statement.get(), column);
}

void SQLiteStatement::Finalizer::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement);
}

SQLiteDatabase::SQLiteDatabase(const QString &path, std::stop_token stop)
    : m_stop(std::make_unique<std::stop_token>(std::move(stop)))
{
    sqlite3 *database = nullptr;
    const int result = sqlite3_open_v2(QFile::encodeName(path).constData(),
                                       &database,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                                       nullptr);
    m_database.reset(database); // to be closed even where it could not be opened
    if (result != SQLITE_OK) {
        m_database.reset();
        return;
    }
    distrust(database);
    // No file of shared memory beside it.
    sqlite3_exec(database, "PRAGMA locking_mode = EXCLUSIVE", nullptr, nullptr, nullptr);
    sqlite3_progress_handler(database, kStepsBetweenStops, isStopped, m_stop.get());
}

bool SQLiteDatabase::isReadable() const
{
    return prepare("SELECT count(*) FROM sqlite_master").step();
}

SQLiteStatement SQLiteDatabase::prepare(const char *sql) const
{
    sqlite3_stmt *statement = nullptr;
    if (m_database)
        sqlite3_prepare_v2(m_database.get(), sql, -1, &statement, nullptr);
    return SQLiteStatement(statement);
}

void SQLiteDatabase::Closer::operator()(sqlite3 *database) const
{
    sqlite3_close(database);
}

} // namespace dugwise
