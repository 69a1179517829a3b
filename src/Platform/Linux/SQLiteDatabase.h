// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDeadlineTimer>
#include <QString>

#include <memory>
#include <optional>
#include <stop_token>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace dugwise {

/// A prepared statement of a database that outlives it. Whatever fails gives no rows.
class SQLiteStatement
{
public:
    explicit SQLiteStatement(sqlite3_stmt *statement = nullptr);

    /// Gives a parameter its value; they count from 1.
    void bind(int parameter, const QString &text);
    void bind(int parameter, int number);
    void bind(int parameter, qint64 number);
    /// As text, which must be UTF-8.
    void bind(int parameter, std::string_view utf8);
    void bindNull(int parameter);

    /// Goes to the next row; false when there is none, or on an error, a stop or a deadline.
    [[nodiscard]] bool step();
    /// Whether the latest step found no end of the rows, but an error, a stop or a deadline.
    [[nodiscard]] bool hasFailed() const;
    /// For one that has no rows: carries it out and makes it ready for its next values; false on an
    /// error.
    [[nodiscard]] bool run();
    /// Makes it ready for other values.
    void reset();

    /// Columns count from 0; text is absent where it is NULL or no valid UTF-8.
    [[nodiscard]] std::optional<QString> text(int column) const;
    /// 0 where it is NULL or no number.
    [[nodiscard]] qint64 integer(int column) const;
    [[nodiscard]] double real(int column) const;
    [[nodiscard]] bool isNull(int column) const;
    /// The text as it is, until the next step.
    [[nodiscard]] std::string_view bytes(int column) const;

private:
    struct Finalizer
    {
        void operator()(sqlite3_stmt *statement) const;
    };
    std::unique_ptr<sqlite3_stmt, Finalizer> m_statement;
    int m_result = -1; ///< of the latest step; of one that cannot be prepared, always an error
};

/// A database for one thread at a time. Unless it is one of our own it is another program's, read
/// with distrust: no statement changes it, and nothing in its schema runs (views, triggers and
/// functions are off).
class SQLiteDatabase
{
public:
    /// One that is not open.
    SQLiteDatabase() = default;
    /// A private copy: opening it may roll back what its writer left unfinished.
    SQLiteDatabase(const QString &path, std::stop_token stop);
    /// The original where it lies: nothing is locked or written, and logs beside it are not looked
    /// at. What is read counts for nothing if the file changes meanwhile.
    [[nodiscard]] static SQLiteDatabase inPlace(const QString &path, std::stop_token stop);

    /// One of our own, to be read and written; made, for its owner only, where there is none.
    [[nodiscard]] static SQLiteDatabase own(const QString &path, std::stop_token stop = {});

    /// Statements fail from then on.
    void setDeadline(QDeadlineTimer deadline);
    /// Makes and removes views that only this object knows, by statements "CREATE TEMP VIEW" and
    /// "DROP VIEW", up to one that fails. They hide tables of the same name.
    void changeViews(const char *sql);

    /// Whether it is open and a database; reads its first page.
    [[nodiscard]] bool isReadable() const;
    [[nodiscard]] SQLiteStatement prepare(const char *sql) const;
    /// Carries out statements without rows, up to one that fails.
    [[nodiscard]] bool run(const char *sql) const;
    /// Whether the latest thing that was done failed for the file being damaged or no database.
    [[nodiscard]] bool isDamaged() const;

private:
    struct Limits
    {
        std::stop_token stop;
        QDeadlineTimer deadline{QDeadlineTimer::Forever};
    };
    struct Closer
    {
        void operator()(sqlite3 *database) const;
    };
    SQLiteDatabase(const QByteArray &name, int flags, std::stop_token stop);
    void execute(const char *sql) const;
    static int isOver(void *limits);

    // Their place must not change: SQLite asks while a statement runs.
    std::unique_ptr<Limits> m_limits;
    std::unique_ptr<sqlite3, Closer> m_database;
};

} // namespace dugwise
