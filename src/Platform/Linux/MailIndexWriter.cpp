// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MailIndexWriter.h"

#include "Platform/Linux/MailIndex.h"
#include "Platform/StandardFolders.h"
#include "Utilities/FoldedText.h"
#include "Utilities/Text.h"

#include <QFile>
#include <QFileInfo>

#include <xxhash.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

/// Characters of a text that are kept as they are.
constexpr std::size_t kBeginning = 300;
/// Removals between commits; each takes a fraction of a millisecond.
constexpr qint64 kMostRemoved = 4096;

// item: all that is in the folders, also what could not be read, which has no message.
// identity: of the Message-ID, 0 for none. name: of the file below the folder.
constexpr auto kTables = R"(
    CREATE TABLE folder (id INTEGER PRIMARY KEY, path TEXT NOT NULL UNIQUE, state TEXT NOT NULL,
        size INTEGER NOT NULL, tail INTEGER NOT NULL, tailKey INTEGER NOT NULL);
    CREATE TABLE item (folder INTEGER NOT NULL, key NOT NULL, message INTEGER,
        PRIMARY KEY (folder, key)) WITHOUT ROWID;
    CREATE TABLE message (id INTEGER PRIMARY KEY, folder INTEGER NOT NULL, name TEXT, subject TEXT,
        authors TEXT, beginning TEXT, identity INTEGER NOT NULL);
    CREATE TABLE progress (done INTEGER NOT NULL, total INTEGER NOT NULL);
    CREATE VIRTUAL TABLE words USING fts5(subject, body, addresses,
        tokenize = 'trigram case_sensitive 1');
    INSERT INTO words (words, rank) VALUES ('hashsize', 33554432);)";

void bindText(SQLiteStatement &statement, int parameter, std::string_view text)
{
    if (text.empty())
        statement.bindNull(parameter);
    else
        statement.bind(parameter, text);
}

void bindKey(SQLiteStatement &statement, int parameter, const MailIndexWriter::Key &key)
{
    if (const auto *const number = std::get_if<qint64>(&key))
        statement.bind(parameter, *number);
    else
        statement.bind(parameter, view(std::get<QByteArray>(key)));
}

QByteArray bytesOf(const SQLiteStatement &row, int column)
{
    const std::string_view text = row.bytes(column);
    return {text.data(), static_cast<qsizetype>(text.size())};
}

qint64 secondOf(const MailIndexWriter::NewMessage &message)
{
    const qint64 date = message.mail->date.value_or(0);
    return date > 0 && date <= MailIndex::kLastSecond ? date : 0;
}

} // namespace

MailIndexWriter::MailIndexWriter(const QString &folder, std::stop_token stop)
    : m_folder(folder)
    , m_path(MailIndex::path(folder))
    , m_stop(std::move(stop))
{
    makePrivateFolder(folder);
    const bool isMarked = MailIndex::takeDamageMark(folder);
    if (isMarked || mustBeMade())
        make();
    check(m_database.run("PRAGMA synchronous = NORMAL; PRAGMA cache_size = -32768;"
                         "PRAGMA journal_size_limit = 67108864"));
    m_insertMessage = m_database.prepare("INSERT INTO message VALUES (?, ?, ?, ?, ?, ?, ?)");
    m_insertWords = m_database.prepare(
        "INSERT INTO words (rowid, subject, body, addresses) VALUES (?, ?, ?, ?)");
    m_insertItem = m_database.prepare("INSERT OR REPLACE INTO item VALUES (?, ?, ?)");
    m_lastNumber = m_database.prepare("SELECT max(id) FROM message WHERE id < ?");
    m_findItem = m_database.prepare("SELECT message FROM item WHERE folder = ? AND key = ?");
    m_deleteItem = m_database.prepare("DELETE FROM item WHERE folder = ? AND key = ?");
    m_deleteMessage = m_database.prepare("DELETE FROM message WHERE id = ?");
    m_deleteWords = m_database.prepare("DELETE FROM words WHERE rowid = ?");
    m_rename = m_database.prepare("UPDATE message SET name = ? WHERE id = ?");
}

void MailIndexWriter::markDamaged() const
{
    MailIndex::markDamaged(m_folder);
}

QHash<QString, MailIndexWriter::Folder> MailIndexWriter::folders()
{
    QHash<QString, Folder> folders;
    SQLiteStatement rows =
        m_database.prepare("SELECT path, id, state, size, tail, tailKey FROM folder");
    while (rows.step()) {
        folders.insert(toQString(rows.bytes(0)),
                       {.id = rows.integer(1),
                        .state = rows.text(2).value_or(QString()).toUtf8(),
                        .size = rows.integer(3),
                        .tail = rows.integer(4),
                        .tailKey = rows.integer(5)});
    }
    check(!rows.hasFailed());
    return folders;
}

MailIndexWriter::Folder MailIndexWriter::folder(const QString &path)
{
    SQLiteStatement insert =
        m_database.prepare("INSERT OR IGNORE INTO folder VALUES (NULL, ?, '', -1, 0, 0)");
    insert.bind(1, path);
    check(insert.run());
    SQLiteStatement find = m_database.prepare("SELECT id FROM folder WHERE path = ?");
    find.bind(1, path);
    Folder folder;
    check(find.step());
    if (!m_hasFailed)
        folder.id = find.integer(0);
    return folder;
}

QSet<qint64> MailIndexWriter::keys(qint64 folder)
{
    QSet<qint64> keys;
    SQLiteStatement rows = m_database.prepare("SELECT key FROM item WHERE folder = ?");
    rows.bind(1, folder);
    while (rows.step())
        keys.insert(rows.integer(0));
    check(!rows.hasFailed());
    return keys;
}

QList<MailIndexWriter::Key> MailIndexWriter::allKeys(qint64 folder)
{
    QList<Key> keys;
    SQLiteStatement rows =
        m_database.prepare("SELECT key, typeof(key) = 'integer' FROM item WHERE folder = ?");
    rows.bind(1, folder);
    while (rows.step()) {
        if (rows.integer(1) != 0)
            keys.append(rows.integer(0));
        else
            keys.append(bytesOf(rows, 0));
    }
    check(!rows.hasFailed());
    return keys;
}

QHash<QByteArray, QByteArray> MailIndexWriter::names(qint64 folder)
{
    QHash<QByteArray, QByteArray> names;
    SQLiteStatement rows = m_database.prepare(
        "SELECT i.key, m.name FROM item i LEFT JOIN message m ON m.id = i.message "
        "WHERE i.folder = ?");
    rows.bind(1, folder);
    while (rows.step())
        names.insert(bytesOf(rows, 0), bytesOf(rows, 1));
    check(!rows.hasFailed());
    return names;
}

void MailIndexWriter::begin()
{
    if (!m_hasFailed)
        check(m_database.run("BEGIN IMMEDIATE"));
}

void MailIndexWriter::commit()
{
    if (!m_hasFailed)
        check(m_database.run("COMMIT"));
}

void MailIndexWriter::add(QList<NewMessage> messages)
{
    // The full-text index takes them best by ascending numbers.
    const auto read = std::stable_partition(
        messages.begin(), messages.end(), [](const NewMessage &message) { return !message.mail; });
    std::stable_sort(read, messages.end(), [](const NewMessage &one, const NewMessage &other) {
        return secondOf(one) < secondOf(other);
    });
    for (const NewMessage &message : std::as_const(messages)) {
        if (m_hasFailed)
            return;
        qint64 id = 0;
        if (message.mail) {
            const qint64 second = secondOf(message);
            m_lastNumber.bind(1, (second + 1) << MailIndex::kSequenceBits);
            check(m_lastNumber.step());
            const qint64 last = m_lastNumber.integer(0);
            m_lastNumber.reset();
            id = std::max(last, second << MailIndex::kSequenceBits) + 1;
            if (id >> MailIndex::kSequenceBits != second) // millions in one second
                id = 0;
        }
        insert(id, message);
    }
}

void MailIndexWriter::insert(qint64 id, const NewMessage &message)
{
    m_insertItem.bind(1, message.folder);
    bindKey(m_insertItem, 2, message.key);
    if (id == 0) {
        m_insertItem.bindNull(3);
        check(m_insertItem.run());
        return;
    }
    m_insertItem.bind(3, id);
    check(m_insertItem.run());

    const ParsedMail &mail = *message.mail;
    const QByteArray &identifier = mail.identifier;
    const auto size = static_cast<std::size_t>(identifier.size());
    const auto identity =
        size == 0 ? 0 : static_cast<qint64>(XXH3_64bits(identifier.constData(), size) | 1U);
    const std::string_view text = view(mail.text);
    m_insertMessage.bind(1, id);
    m_insertMessage.bind(2, message.folder);
    bindText(m_insertMessage, 3, view(message.name));
    bindText(m_insertMessage, 4, view(mail.subject));
    bindText(m_insertMessage, 5, view(mail.authors.join('\n')));
    bindText(m_insertMessage, 6, text.substr(0, prefixLength(text, kBeginning)));
    m_insertMessage.bind(7, identity);
    check(m_insertMessage.run());

    m_insertWords.bind(1, id);
    m_insertWords.bind(2, std::string_view(folded(view(mail.subject))));
    m_insertWords.bind(3, std::string_view(folded(text)));
    const std::string addresses = MailIndex::spaced(folded(view(mail.addresses.join('\n'))));
    m_insertWords.bind(4, std::string_view(addresses));
    check(m_insertWords.run());
}

/// Its number; 0 for none.
qint64 MailIndexWriter::messageOf(qint64 folder, const Key &key)
{
    m_findItem.bind(1, folder);
    bindKey(m_findItem, 2, key);
    const qint64 message = m_findItem.step() ? m_findItem.integer(0) : 0;
    check(!m_findItem.hasFailed());
    m_findItem.reset();
    return message;
}

void MailIndexWriter::remove(qint64 folder, const Key &key)
{
    if (m_hasFailed)
        return;
    const qint64 message = messageOf(folder, key);
    m_deleteItem.bind(1, folder);
    bindKey(m_deleteItem, 2, key);
    check(m_deleteItem.run());
    if (message != 0) {
        m_deleteMessage.bind(1, message);
        check(m_deleteMessage.run());
        m_deleteWords.bind(1, message);
        check(m_deleteWords.run());
    }
    if (++m_removed % kMostRemoved == 0) {
        save({.id = folder});
        commit();
        begin();
    }
}

void MailIndexWriter::rename(qint64 folder, const Key &key, const QByteArray &name)
{
    if (m_hasFailed)
        return;
    const qint64 message = messageOf(folder, key);
    m_rename.bind(1, view(name));
    m_rename.bind(2, message);
    check(m_rename.run());
}

void MailIndexWriter::save(const Folder &folder)
{
    if (m_hasFailed)
        return;
    SQLiteStatement update = m_database.prepare(
        "UPDATE folder SET state = ?, size = ?, tail = ?, tailKey = ? WHERE id = ?");
    update.bind(1, view(folder.state));
    update.bind(2, folder.size);
    update.bind(3, folder.tail);
    update.bind(4, folder.tailKey);
    update.bind(5, folder.id);
    check(update.run());
}

void MailIndexWriter::removeFolder(qint64 folder)
{
    if (m_hasFailed)
        return;
    SQLiteStatement remove = m_database.prepare("DELETE FROM folder WHERE id = ?");
    remove.bind(1, folder);
    check(remove.run());
}

void MailIndexWriter::setProgress(qint64 done, qint64 total)
{
    if (m_hasFailed)
        return;
    check(m_database.run("DELETE FROM progress"));
    if (total == 0)
        return;
    SQLiteStatement insert = m_database.prepare("INSERT INTO progress VALUES (?, ?)");
    insert.bind(1, done);
    insert.bind(2, total);
    check(insert.run());
}

/// Opens the index; fails where it cannot be told what it is, as while somebody else has it alone.
bool MailIndexWriter::mustBeMade()
{
    if (!QFileInfo::exists(m_path))
        return true;
    m_database = SQLiteDatabase::own(m_path, m_stop);
    SQLiteStatement version = m_database.prepare("PRAGMA user_version");
    if (!version.step()) {
        const bool isDamaged = m_database.isDamaged();
        check(isDamaged);
        return isDamaged;
    }
    if (version.integer(0) != MailIndex::kVersion)
        return true;
    SQLiteStatement words = m_database.prepare("SELECT rowid FROM words LIMIT 1");
    return !words.step() && m_database.isDamaged();
}

void MailIndexWriter::make()
{
    m_database = {};
    for (const auto end : {""_L1, "-wal"_L1, "-shm"_L1})
        QFile::remove(m_path + end);
    m_database = SQLiteDatabase::own(m_path, m_stop);
    check(m_database.run("PRAGMA synchronous = OFF; PRAGMA journal_mode = WAL; BEGIN"));
    check(m_database.run(kTables));
    const QByteArray version = "PRAGMA user_version = " + QByteArray::number(MailIndex::kVersion);
    check(m_database.run(version.constData()));
    commit();
}

void MailIndexWriter::check(bool isDone)
{
    // Whatever is asked of the database after that hides the cause.
    m_isDamaged = m_isDamaged || (!m_hasFailed && !isDone && m_database.isDamaged());
    m_hasFailed = m_hasFailed || !isDone || m_stop.stop_requested();
}

} // namespace dugwise
