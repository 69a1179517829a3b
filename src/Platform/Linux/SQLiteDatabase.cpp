// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/SQLiteDatabase.h"

#include "Platform/FileDescriptor.h"
#include "Utilities/Text.h"

#include <QFile>

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <array>

namespace dugwise {

namespace {

constexpr int kLargestValue = 16 * 1024 * 1024; // bytes
constexpr int kPatience = 300;                  // milliseconds
constexpr int kStepsBetweenStops = 10'000;      // of SQLite's virtual machine

void distrust(sqlite3 *database)
{
    if (!database)
        return;
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

void SQLiteStatement::bind(int parameter, const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    if (m_statement)
        sqlite3_bind_text64(m_statement.get(),
                            parameter,
                            utf8.constData(),
                            static_cast<sqlite3_uint64>(utf8.size()),
                            SQLITE_TRANSIENT,
                            SQLITE_UTF8);
}

void SQLiteStatement::bind(int parameter, int number)
{
    if (m_statement)
        sqlite3_bind_int(m_statement.get(), parameter, number);
}

void SQLiteStatement::bind(int parameter, qint64 number)
{
    if (m_statement)
        sqlite3_bind_int64(m_statement.get(), parameter, number);
}

void SQLiteStatement::bind(int parameter, std::string_view utf8)
{
    if (m_statement)
        sqlite3_bind_text64(m_statement.get(),
                            parameter,
                            utf8.data() ? utf8.data() : "",
                            utf8.size(),
                            SQLITE_TRANSIENT,
                            SQLITE_UTF8);
}

void SQLiteStatement::bindNull(int parameter)
{
    if (m_statement)
        sqlite3_bind_null(m_statement.get(), parameter);
}

bool SQLiteStatement::step()
{
    if (m_statement)
        m_result = sqlite3_step(m_statement.get());
    return m_result == SQLITE_ROW;
}

bool SQLiteStatement::hasFailed() const
{
    return m_result != SQLITE_ROW && m_result != SQLITE_DONE;
}

bool SQLiteStatement::run()
{
    const bool isDone = m_statement && sqlite3_step(m_statement.get()) == SQLITE_DONE;
    reset();
    return isDone;
}

void SQLiteStatement::reset()
{
    sqlite3_reset(m_statement.get());
}

bool SQLiteStatement::isNull(int column) const
{
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_NULL;
}

std::string_view SQLiteStatement::bytes(int column) const
{
    const void *const text = sqlite3_column_text(m_statement.get(), column);
    const int size = sqlite3_column_bytes(m_statement.get(), column);
    return {static_cast<const char *>(text), static_cast<std::size_t>(text ? size : 0)};
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

SQLiteDatabase::SQLiteDatabase(const QByteArray &name, int flags, std::stop_token stop)
    : m_limits(std::make_unique<Limits>(Limits{.stop = std::move(stop)}))
{
    sqlite3 *database = nullptr;
    const int result =
        sqlite3_open_v2(name.constData(), &database, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    m_database.reset(database); // to be closed even where it could not be opened
    if (result != SQLITE_OK) {
        m_database.reset();
        return;
    }
    sqlite3_progress_handler(database, kStepsBetweenStops, isOver, m_limits.get());
}

SQLiteDatabase::SQLiteDatabase(const QString &path, std::stop_token stop)
    : SQLiteDatabase(QFile::encodeName(path), SQLITE_OPEN_READWRITE, std::move(stop))
{
    distrust(m_database.get());
    // No file of shared memory beside it.
    execute("PRAGMA locking_mode = EXCLUSIVE");
}

SQLiteDatabase SQLiteDatabase::inPlace(const QString &path, std::stop_token stop)
{
    // https://sqlite.org/uri.html#uriimmutable
    const QByteArray uri =
        "file://" + QFile::encodeName(path).toPercentEncoding("/") + "?immutable=1";
    SQLiteDatabase database(uri, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, std::move(stop));
    distrust(database.m_database.get());
    return database;
}

SQLiteDatabase SQLiteDatabase::own(const QString &path, std::stop_token stop)
{
    const QByteArray name = QFile::encodeName(path);
    // SQLite gives its logs the rights of the database. Closing one that was there before would
    // drop the locks that this process holds on it (https://sqlite.org/howtocorrupt.html).
    const FileDescriptor made(
        ::open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    SQLiteDatabase database(name, SQLITE_OPEN_READWRITE, std::move(stop));
    // Whoever is the last to close it has it alone for a moment.
    if (database.m_database)
        sqlite3_busy_timeout(database.m_database.get(), kPatience);
    return database;
}

void SQLiteDatabase::setDeadline(QDeadlineTimer deadline)
{
    if (m_limits)
        m_limits->deadline = deadline;
}

void SQLiteDatabase::changeViews(const char *sql)
{
    // Else not even the temporary schema may change; the database itself opens read-only or is
    // ours.
    execute("PRAGMA query_only = OFF");
    execute(sql);
    execute("PRAGMA query_only = ON");
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

bool SQLiteDatabase::run(const char *sql) const
{
    return m_database
           && sqlite3_exec(m_database.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

bool SQLiteDatabase::isDamaged() const
{
    const int error = m_database ? sqlite3_errcode(m_database.get()) : SQLITE_OK;
    return error == SQLITE_CORRUPT || error == SQLITE_NOTADB;
}

void SQLiteDatabase::execute(const char *sql) const
{
    if (m_database)
        sqlite3_exec(m_database.get(), sql, nullptr, nullptr, nullptr);
}

int SQLiteDatabase::isOver(void *limits)
{
    const auto *const own = static_cast<const Limits *>(limits);
    return own->stop.stop_requested() || own->deadline.hasExpired() ? 1 : 0;
}

void SQLiteDatabase::Closer::operator()(sqlite3 *database) const
{
    sqlite3_close(database);
}

} // namespace dugwise
