// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DesktopMessageStore.h"
#include "Services/MessagesService.h"
#include "support/OrdinaryUser.h"
#include "support/SampleFiles.h"
#include "support/SampleHome.h"
#include "support/SampleStores.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

class TstMessagesService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_home = std::make_unique<SampleHome>(); }

    void findsMessages_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<std::optional<QString>>("contact");
        QTest::addColumn<int>("limit");
        QTest::addColumn<QStringList>("texts");
        const auto row = [](const char *name,
                            const QString &query,
                            const std::optional<QString> &contact,
                            int limit,
                            const QStringList &texts) {
            QTest::newRow(name) << query << contact << limit << texts;
        };
        const QString orphan = u"an orphan's lunch"_s;
        const QString late = u"lunch is LATE"_s;
        const QString noon = u"Lunch at noon?"_s;
        const QStringList percent{u"100% sure"_s, u"100 percent"_s};
        row("in any case", u"lUNCH"_s, {}, 10, {orphan, late, late, noon});
        row("the newest", u"lunch"_s, {}, 2, {orphan, late});
        row("none asked for", u"lunch"_s, {}, 0, {});
        row("a number", u"lunch"_s, u"555"_s, 10, {noon});
        row("an address", u""_s, u"SARAH@"_s, 10, {late, late, u"grüße"_s});
        row("all, but for those without text", u""_s, {}, 3, {orphan, late});
        row("no such text", u"dinner"_s, {}, 10, {});
        row("no such contact", u"lunch"_s, u"robin"_s, 10, {});
        row("only ASCII has cases", u"GRÜSSE"_s, {}, 10, {});
        row("beyond ASCII", u"GRüßE"_s, {}, 10, {u"grüße"_s});
        row("%", u"100%"_s, {}, 10, percent);
        row("_", u"a_b"_s, {}, 10, {u"axb"_s, u"a_b"_s});
        row("_ in a contact", u"lunch"_s, u"+1555010_"_s, 10, {noon});
        row("a quote", u"n's "_s, {}, 10, {orphan});
        row("an operator", u"lunch OR noon"_s, {}, 10, {});
        row("a pattern too long for SQLite", QString(60'000, u'l'), {}, 10, {});
    }
    void findsMessages()
    {
        SampleChatDatabase chats(m_home->folder.path());
        chats.add({.text = u"grüße"_s, .date = "10000000000", .other = 2});
        chats.add({.text = u"a_b"_s, .date = "20000000000"});
        chats.add({.text = u"100 percent"_s, .date = "30000000000"});
        chats.add({.text = u"axb"_s, .date = "40000000000"});
        chats.add({.text = u"Lunch at noon?"_s, .date = "50000000000", .direction = -1});
        chats.add({.text = u"lunch is LATE"_s, .date = "70000000000", .other = 2, .chats = {1, 2}});
        chats.add({.text = u"100% sure"_s, .date = "60000000000", .chats = {}});
        chats.add({.text = u""_s, .date = "80000000000"});
        chats.add({.text = u"an orphan's lunch"_s, .date = "90000000000", .other = 99});
        chats.run("INSERT INTO message (text, date) VALUES (NULL, 100000000000)");
        QFETCH(QString, query);
        QFETCH(std::optional<QString>, contact);
        QFETCH(int, limit);
        QStringList texts;
        for (const MessageSearchResult &message : search(query, contact, limit))
            texts.append(message.text);
        QTEST(texts, "texts");
    }

    void makesRecords()
    {
        SampleChatDatabase chats(m_home->folder.path());
        chats.add({.text = u"zero"_s, .date = "0", .direction = -1});
        chats.add({.text = u"later"_s, .date = "699999999999999999", .other = 2, .chats = {1, 2}});
        chats.add({.text = u"alone"_s, .date = "-1000000000", .other = 0, .chats = {}});
        chats.add({.text = u"odd"_s, .date = "1e300", .other = 0, .chats = {77}});
        chats.run("UPDATE message SET is_from_me = 2 WHERE text = 'odd'");
        const QList<MessageSearchResult> found = search(u""_s);
        QCOMPARE(lines(found),
                 QStringList({u"from Unknown: odd"_s,
                              u"from sarah@example.org: later (+15550101)"_s,
                              u"from sarah@example.org: later (sarah@example.org)"_s,
                              u"to +15550101: zero (+15550101)"_s,
                              u"from Unknown: alone"_s}));
        QCOMPARE(found[1].date, Instant{699'999'999}); // whole seconds
        QCOMPARE(found[3].date, Instant{0});
        QCOMPARE(found[4].date, Instant{-1});
        QVERIFY(found[1].id != found[2].id && !found[1].id.isNull());
    }

    void cutsText()
    {
        SampleChatDatabase chats(m_home->folder.path());
        const QString person = u"👩🏽\u200d🚒"_s;
        chats.add({.text = u"x"_s + person.repeated(400), .date = "0"});
        QCOMPARE(search(u"x"_s).first().text, u"x"_s + person.repeated(299));
    }

    void readsChatty()
    {
        SampleChatty chatty(m_home->folder.path());
        chatty.add({.text = u"Dinner?"_s, .date = "1700000000"});
        chatty.add({.text = u"dinner at 7"_s, .date = "1700000060", .direction = -1});
        chatty.add({.text = u"dinner, all"_s, .date = "1700000120", .other = 3, .chats = {3}});
        chatty.add({.text = u"no dinner"_s, .date = "1700000180", .direction = -1, .chats = {3}},
                   "3");
        chatty.add({.text = u"dinner dra"_s, .date = "1700000240", .direction = -1}, "1");
        chatty.add({.text = u"dinner began"_s, .date = "1700000300", .direction = 0});
        chatty.add({.text = u"dinner never"_s, .date = "0", .other = 2, .chats = {2}}, "2");
        const QList<MessageSearchResult> found = search(u"dinner"_s);
        QCOMPARE(lines(found),
                 QStringList({u"to Unknown: no dinner (rowing@example.org)"_s,
                              u"from idris@example.org: dinner, all (rowing@example.org)"_s,
                              u"to +15550101: dinner at 7 (+15550101)"_s,
                              u"from +15550101: Dinner? (+15550101)"_s,
                              u"from sarah@example.org: dinner never (sarah@example.org)"_s}));
        QCOMPARE(found[3].date, Instant::fromUnix(1'700'000'000));
        QCOMPARE(lines(search(u"dinner"_s, u"0101"_s)), lines({found[2], found[3]}));
    }

    /// Those of the latest numbers are looked at first, which need not be the newest.
    void findsTheNewestOfManyInChatty()
    {
        SampleChatty chatty(m_home->folder.path());
        chatty.run("BEGIN");
        chatty.add({.text = u"old word"_s, .date = "100"});
        chatty.add({.text = u"newest word"_s, .date = "90000"});
        for (int i = 0; i < 10'000; ++i)
            chatty.add({.text = i == 5000 ? u"word"_s : u"other"_s,
                        .date = QByteArray::number(20'000 + i)});
        chatty.run("COMMIT");
        const QString chat = u" (+15550101)"_s;
        const QStringList all{u"from +15550101: newest word"_s + chat,
                              u"from +15550101: word"_s + chat,
                              u"from +15550101: old word"_s + chat};
        QCOMPARE(lines(search(u"word"_s)), all);
        QCOMPARE(lines(search(u"word"_s, {}, -1)), all);
        QCOMPARE(lines(search(u"word"_s, {}, 2)), all.first(2));
        QCOMPARE(lines(search(u"word"_s, {}, 1)), all.first(1));
    }

    void prefersTheChatDatabase()
    {
        SampleChatty chatty(m_home->folder.path());
        chatty.add({.text = u"chatty"_s, .date = "1700000000"});
        QCOMPARE(search(u""_s).size(), 1);
        const SampleChatDatabase chats(m_home->folder.path());
        QCOMPARE(search(u""_s).size(), 0);
    }

    void readsWhatIsBeingWritten_data()
    {
        QTest::addColumn<QByteArray>("mode");
        QTest::addColumn<bool>("isChatty");
        for (const bool isChatty : {false, true}) {
            const char *const store = isChatty ? "Chatty" : "chat.db";
            const auto row = [&](const char *name, const QByteArray &mode) {
                QTest::addRow("%s, %s", store, name) << mode << isChatty;
            };
            row("rollback journal", "");
            row("journal kept", "PRAGMA journal_mode = PERSIST;");
            row("write-ahead log", "PRAGMA journal_mode = WAL; PRAGMA wal_autocheckpoint = 0;");
            row("locked", "PRAGMA locking_mode = EXCLUSIVE;");
            row("locked, write-ahead log",
                "PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = WAL;");
        }
    }
    void readsWhatIsBeingWritten()
    {
        QFETCH(QByteArray, mode);
        QFETCH(bool, isChatty);
        if (isChatty)
            checkReadingWhileWriting(SampleChatty(m_home->folder.path(), mode));
        else
            checkReadingWhileWriting(SampleChatDatabase(m_home->folder.path(), mode));
        const auto before = checksums(); // the writer is gone
        QCOMPARE(search(u"text"_s).size(), 2);
        QCOMPARE(checksums(), before);
    }

    void makesNothingOfOtherFiles_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char *kind : {"folder",
                                 "fifo",
                                 "empty",
                                 "text",
                                 "no tables",
                                 "another column",
                                 "views",
                                 "cut",
                                 "spoilt",
                                 "header only"})
            QTest::newRow(kind) << QString::fromLatin1(kind);
    }
    void makesNothingOfOtherFiles()
    {
        QFETCH(QString, kind);
        for (const QString &path : {m_home->path(u"Library/Messages/chat.db"_s),
                                    m_home->path(u".purple/chatty/db/chatty-history.db"_s)}) {
            makeOtherFile(path, kind);
            const auto before = checksums();
            QCOMPARE(lines(search(u"e"_s)), QStringList());
            QCOMPARE(lines(search(u"e"_s, u"1"_s)), QStringList());
            QCOMPARE(checksums(), before);
            QDir(m_home->path(u"Library"_s)).removeRecursively();
        }
    }

    void isAccessible()
    {
        const DesktopMessageStore store(m_home->platform.folders);
        const MessagesService service(&store);
        QVERIFY(!service.isAccessible() && !MessagesService().isAccessible());
        QVERIFY(service.searchMessages(u""_s, {}, 10).isEmpty());
        QVERIFY(MessagesService().searchMessages(u""_s, {}, 10).isEmpty());
        SampleChatty chatty(m_home->folder.path());
        chatty.add({.text = u"chatty"_s, .date = "1700000000"});
        QVERIFY(service.isAccessible());
        SampleChatDatabase chats(m_home->folder.path());
        chats.add({.text = u"chat"_s, .date = "0"});
        QVERIFY(service.isAccessible());
        QFile(m_home->folder.path()).setPermissions(QFile::Permissions(0x7755)); // of rwxr-xr-x
        QFile(m_home->path(u"Library/Messages/chat.db"_s)).setPermissions({});
        const OrdinaryUser user;
        QVERIFY(QFileInfo(m_home->path(u".purple/chatty/db/chatty-history.db"_s)).isReadable());
        QVERIFY(!service.isAccessible());
        QVERIFY(service.searchMessages(u""_s, {}, 10).isEmpty());
    }

private:
    [[nodiscard]] QList<MessageSearchResult>
    search(const QString &query, const std::optional<QString> &contact = {}, int limit = 10) const
    {
        const DesktopMessageStore store(m_home->platform.folders);
        return MessagesService(&store).searchMessages(query, contact, limit);
    }

    static QStringList lines(const QList<MessageSearchResult> &messages)
    {
        QStringList all;
        for (const MessageSearchResult &message : messages) {
            const QString chat = message.chatID ? u" (%1)"_s.arg(*message.chatID) : u""_s;
            all.append(u"%1 %2: %3%4"_s.arg(
                message.isFromMe ? u"to"_s : u"from"_s, message.sender, message.text, chat));
        }
        return all;
    }

    /// All files of the home folder, apart from the program's own, with the hash of what they hold.
    [[nodiscard]] QMap<QString, QByteArray> checksums() const
    {
        QMap<QString, QByteArray> all;
        QDirIterator files(
            m_home->folder.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            all.insert(path, QCryptographicHash::hash(readFile(path), QCryptographicHash::Sha256));
        }
        return all;
    }

    template <typename Store>
    void checkReadingWhileWriting(Store &&store) const
    {
        const auto check = [&](const QStringList &texts) {
            const auto before = checksums();
            QStringList found;
            for (const MessageSearchResult &message : search(u"text"_s))
                found.append(message.text);
            QCOMPARE(found, texts);
            QCOMPARE(checksums(), before);
        };
        store.add({.text = u"first text"_s, .date = "1000"});
        check({u"first text"_s});
        store.run("BEGIN IMMEDIATE");
        store.add({.text = u"second text"_s, .date = "2000"});
        check({u"first text"_s}); // not yet
        store.run("COMMIT");
        check({u"second text"_s, u"first text"_s});
    }

    /// Something that is no store, or one that has been damaged, in its place.
    static void makeOtherFile(const QString &path, const QString &kind)
    {
        const QMap<QString, QByteArray> contents{{u"empty"_s, ""}, {u"text"_s, "some text "}};
        const QMap<QString, QByteArray> schemas{
            {u"no tables"_s, "CREATE TABLE recipe (text)"},
            {u"another column"_s,
             "CREATE TABLE message (body); INSERT INTO message VALUES ('e');"
             "CREATE TABLE messages (text); INSERT INTO messages VALUES ('e')"},
            {u"views"_s,
             "CREATE TABLE handle (id); CREATE TABLE chat (chat_identifier);"
             "CREATE TABLE chat_message_join (message_id, chat_id);"
             "CREATE TABLE users (id, username); CREATE TABLE threads (id, name, type);"
             "CREATE VIEW message AS SELECT 'e' AS text, 0 AS date, 0 AS is_from_me,"
             "0 AS handle_id, 1 AS ROWID;"
             "CREATE VIEW messages AS SELECT 1 AS id, 1 AS thread_id, 1 AS sender_id,"
             "'e' AS body, 1 AS direction, 0 AS time, 0 AS status"}};
        QVERIFY(QDir().mkpath(kind == u"folder"_s ? path : FilePath::folder(path)));
        if (kind == u"fifo"_s)
            QCOMPARE(::mkfifo(path.toUtf8().constData(), 0600), 0);
        else if (contents.contains(kind))
            writeFile(path, contents[kind].repeated(1000));
        else if (schemas.contains(kind))
            const SampleDatabase database(path, schemas[kind]);
        else if (kind != u"folder"_s)
            damageStore(path, kind);
    }

    /// A store of which what comes after its first page is cut off or spoilt.
    static void damageStore(const QString &path, const QString &kind)
    {
        constexpr qsizetype kPage = 4096;
        const auto fill = [](auto &&store) {
            store.run("BEGIN");
            for (int i = 0; i < 500; ++i)
                store.add({.text = u"e"_s.repeated(200), .date = QByteArray::number(i)});
            store.run("COMMIT");
        };
        const QString home = path.section(u"/Library"_s, 0, 0).section(u"/.purple"_s, 0, 0);
        if (path.contains(u"chatty"_s))
            fill(SampleChatty(home));
        else
            fill(SampleChatDatabase(home));
        QByteArray content = readFile(path);
        if (kind == u"spoilt"_s)
            std::fill(content.begin() + kPage, content.end(), '\x05');
        else
            content.truncate(kind == u"cut"_s ? kPage + 100 : 100);
        writeFile(path, content);
    }

    std::unique_ptr<SampleHome> m_home;
};

QTEST_GUILESS_MAIN(TstMessagesService)
#include "tst_MessagesService.moc"
