// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <memory>
#include <optional>
#include <stop_token>

struct sqlite3;
struct sqlite3_stmt;

namespace dugwise {

/// A prepared statement of a database that outlives it. Whatever fails gives no rows.
class SQLiteStatement
{
public:
    explicit SQLiteStatement(sqlite3_stmt *statement = nullptr);

    /// Goes to the next row; false when there is none, or on an error or a stop.
    [[nodiscard]] bool step();

    /// Columns count from 0; text is absent where it is NULL or no valid UTF-8.
    [[nodiscard]] std::optional<QString> text(int column) const;
    /// 0 where it is NULL or no number.
    [[nodiscard]] qint64 integer(int column) const;
    [[nodiscard]] double real(int column) const;

private:
    struct Finalizer
    {
        void operator()(sqlite3_stmt *statement) const;
    };
    std::unique_ptr<sqlite3_stmt, Finalizer> m_statement;
};

/// A private copy of another program's database, read with distrust: no statement changes it, and
/// nothing in its schema runs (views, triggers and functions are off). Opening it may roll back
/// what its writer left unfinished. For one thread at a time.
class SQLiteDatabase
{
public:
    /// One that is not open.
    SQLiteDatabase() = default;
    SQLiteDatabase(const QString &path, std::stop_token stop);

    /// Whether it is open and a database; reads its first page.
    [[nodiscard]] bool isReadable() const;
    [[nodiscard]] SQLiteStatement prepare(const char *sql) const;

private:
    struct Closer
    {
        void operator()(sqlite3 *database) const;
    };
    // Its place must not change: SQLite asks it while a statement runs.
    std::unique_ptr<std::stop_token> m_stop;
    std::unique_ptr<sqlite3, Closer> m_database;
};

} // namespace dugwise
