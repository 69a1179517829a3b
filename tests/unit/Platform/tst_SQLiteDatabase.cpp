// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/FileDescriptor.h"
#include "Platform/Linux/SQLiteDatabase.h"
#include "Platform/Linux/StoreFile.h"
#include "support/SampleFiles.h"
#include "support/SampleStores.h"

#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

class TstSQLiteDatabase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void readsRows()
    {
        SampleDatabase(path(),
                       "CREATE TABLE t (k, x);"
                       "INSERT INTO t VALUES ('ü''\"', 'text'), ('n', 12.5),"
                       "('big', 9007199254740993), ('none', NULL), ('bad', x'ff41'),"
                       "('mark', x'efbbbf41')");
        const SQLiteDatabase database(path(), {});
        const auto row = [&](const QString &key) {
            const QByteArray sql = "SELECT x FROM t WHERE k = " + quoted(key);
            SQLiteStatement statement = database.prepare(sql.constData());
            return statement.step() ? std::optional(std::move(statement)) : std::nullopt;
        };
        QCOMPARE(row(u"ü'\""_s)->text(0), u"text"_s);
        QCOMPARE(row(u"ü'\""_s)->integer(0), 0);
        QCOMPARE(row(u"n"_s)->real(0), 12.5);
        QCOMPARE(row(u"big"_s)->integer(0), 9007199254740993);
        QVERIFY(!row(u"none"_s)->text(0) && !row(u"bad"_s)->text(0));
        QCOMPARE(row(u"mark"_s)->text(0), u"\ufeffA"_s);
        QVERIFY(!row(u"absent"_s));
    }

    void distrustsWhatItReads_data()
    {
        QTest::addColumn<QByteArray>("sql");
        for (const char *sql : {"SELECT * FROM v",
                                "SELECT * FROM unknown",
                                "not SQL",
                                "INSERT INTO t VALUES (2)",
                                "UPDATE sqlite_master SET sql = ''",
                                "ATTACH 'other' AS other",
                                "SELECT load_extension('x')",
                                ""})
            QTest::addRow("%s", sql) << QByteArray(sql);
    }
    void distrustsWhatItReads()
    {
        QFETCH(QByteArray, sql);
        SampleDatabase(path(),
                       "CREATE TABLE t (x); INSERT INTO t VALUES (1);"
                       "CREATE VIEW v AS SELECT 1");
        const SQLiteDatabase database(path(), {});
        QVERIFY(database.isReadable());
        QVERIFY(!database.prepare(sql.constData()).step());
    }

    void stopsSoon()
    {
        SampleDatabase(path(), "CREATE TABLE t (x)");
        std::stop_source stop;
        const SQLiteDatabase database(path(), stop.get_token());
        SQLiteStatement endless = database.prepare("WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL "
                                                   "SELECT x + 1 FROM n) SELECT max(x) FROM n");
        stop.request_stop();
        QVERIFY(!endless.step());
    }

    void stopsAtItsDeadline()
    {
        SampleDatabase(path(), "CREATE TABLE t (x)");
        SQLiteDatabase database(path(), {});
        database.setDeadline(QDeadlineTimer(50));
        SQLiteStatement endless = database.prepare("WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL "
                                                   "SELECT x + 1 FROM n) SELECT max(x) FROM n");
        QVERIFY(!endless.step());
    }

    void hasViewsOfItsOwn()
    {
        SampleDatabase(path(), "CREATE TABLE t (x); INSERT INTO t VALUES (1), (2), (3)");
        const QByteArray before = readFile(path());
        SQLiteDatabase database = SQLiteDatabase::inPlace(path(), {});
        database.changeViews("CREATE TEMP VIEW v AS SELECT x * 10 AS y FROM t; CREATE TABLE u (x);"
                             "CREATE TEMP VIEW w AS SELECT 1");
        SQLiteStatement rows = database.prepare("SELECT y FROM v WHERE y > ? AND y <> ?");
        rows.bind(1, 10);
        rows.bind(2, u"30"_s);
        QVERIFY(rows.step());
        QCOMPARE(rows.integer(0), 20);
        QVERIFY(rows.step() && !rows.step());                 // a text is no number
        QVERIFY(!database.prepare("SELECT * FROM w").step()); // a failure ends it
        QVERIFY(!database.prepare("CREATE TEMP VIEW x AS SELECT 1").step());
        QCOMPARE(readFile(path()), before);
    }

    void readsInPlaceWhatIsWhole()
    {
        SampleDatabase writer(path(), "CREATE TABLE t (x)");
        int calls = 0;
        const auto read = [&](SQLiteDatabase &database) {
            QVERIFY(database.isReadable());
            QVERIFY(QDir(cache()).isEmpty());
            ++calls;
        };
        readDatabase(path(), cache(), read);
        QCOMPARE(calls, 1);
    }

    void readsAgainWhatIsWrittenMeanwhile()
    {
        SampleDatabase writer(path(), "CREATE TABLE t (x); INSERT INTO t VALUES (0)");
        QList<qint64> counts;
        readDatabase(path(), cache(), [&](SQLiteDatabase &database) {
            SQLiteStatement row = database.prepare("SELECT count(*) FROM t");
            counts.append(row.step() ? row.integer(0) : -1);
            if (counts.size() == 1)
                writer.run("INSERT INTO t VALUES (1)");
        });
        QCOMPARE(counts, QList<qint64>({1, 2}));
    }

    void isNotReadable()
    {
        QVERIFY(!SQLiteDatabase().isReadable());
        QVERIFY(!SQLiteDatabase(path(), {}).isReadable());
        QVERIFY(!QFile::exists(path()));
        QCOMPARE(::mkfifo(path().toUtf8().constData(), 0600), 0);
        QVERIFY(!copy().isReadable()); // and does not wait for a writer
    }

    void isNotReadableWithoutACacheFolder()
    {
        SampleDatabase(path(), "CREATE TABLE t (x)");
        QVERIFY(copy().isReadable());
        QVERIFY(!openDatabaseCopy(path(), path() + u"/cache"_s, {}).isReadable());
    }

    void copiesWhatIsLocked()
    {
        SampleDatabase held(path(),
                            "PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = WAL;"
                            "CREATE TABLE t (x); INSERT INTO t VALUES ('in the log')");
        QVERIFY(!SQLiteDatabase(path(), {}).isReadable());
        const SQLiteDatabase database = copy();
        SQLiteStatement rows = database.prepare("SELECT x FROM t");
        QVERIFY(rows.step());
        QCOMPARE(rows.text(0), u"in the log"_s);
        QVERIFY(QDir(cache()).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot));
        held.run("INSERT INTO t VALUES ('later')"); // its writer goes on
        QVERIFY(!rows.step());
    }

    void removesAbandonedCopies()
    {
        SampleDatabase(path(), "CREATE TABLE t (x)");
        const QString abandoned = cache() + u"/store-abandoned/copy"_s;
        const QString used = cache() + u"/store-used/copy"_s;
        const QString another = cache() + u"/unreadable"_s;
        for (const QString &file : {abandoned, used, another})
            writeFile(file, "x");
        const FileDescriptor user(
            ::open(qPrintable(cache() + u"/store-used"_s), O_RDONLY | O_DIRECTORY));
        QCOMPARE(::flock(user.get(), LOCK_EX), 0);
        QVERIFY(copy().isReadable());
        QVERIFY(!QFile::exists(cache() + u"/store-abandoned"_s));
        QVERIFY(QFile::exists(used) && QFile::exists(another));
    }

private:
    [[nodiscard]] QString path() const { return m_folder->filePath(u"database"_s); }
    [[nodiscard]] QString cache() const { return m_folder->filePath(u"cache"_s); }
    [[nodiscard]] SQLiteDatabase copy() const { return openDatabaseCopy(path(), cache(), {}); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TstSQLiteDatabase)
#include "tst_SQLiteDatabase.moc"
