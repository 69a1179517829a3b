// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/FileDescriptor.h"
#include "Platform/FileLock.h"
#include "Platform/Linux/DesktopMailQuery.h"
#include "Platform/Linux/MailFolderNames.h"
#include "Platform/Linux/MailIndex.h"
#include "Platform/Linux/MailIndexWriter.h"
#include "Platform/Linux/MailStores.h"
#include "support/ChildProcesses.h"
#include "support/Fingerprint.h"
#include "support/SampleHome.h"
#include "support/SampleMail.h"

#include <QCoroTask>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <tuple>

using namespace Qt::StringLiterals;

namespace dugwise::test {

class TstDesktopMailQuery : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<SampleHome> m_home;
    std::unique_ptr<DesktopMailQuery> m_query;
    bool m_isLocked = false; ///< by the test

    [[nodiscard]] QString profile(const QString &relative) const
    {
        return m_home->path(u".thunderbird/a.default/"_s + relative);
    }
    [[nodiscard]] QString inbox() const { return profile(u"Mail/Local Folders/Inbox"_s); }

    void start()
    {
        m_query = std::make_unique<DesktopMailQuery>(m_home->platform.folders,
                                                     QStringLiteral(DUGWISE_EXTRACT));
    }
    /// An update from beginning to end; a search waits for some of it only.
    void update() const
    {
        MailIndexer indexer(m_home->platform.folders, QStringLiteral(DUGWISE_EXTRACT));
        indexer.update(true).wait();
        const QString lock = m_home->platform.folders.cache + u"/mail.lock"_s;
        QTRY_VERIFY(m_isLocked || FileLock(lock).state() != FileLock::State::heldByAnother);
    }
    [[nodiscard]] QList<MailItem> gather(const MailPredicate &predicate, int most = 20)
    {
        update();
        return MailIndex(m_home->platform.folders.cache)
            .search(predicate, most, QDeadlineTimer::Forever);
    }
    /// The subjects of what is found, parted by bars.
    [[nodiscard]] QString find(const QString &text, const std::optional<QString> &sender = {})
    {
        QStringList subjects;
        for (const MailItem &item : gather({.textOrSubject = text, .authorEmailAddress = sender}))
            subjects.append(item.subject.value_or(u"(none)"_s));
        return subjects.join(u'|');
    }

private Q_SLOTS:
    void init()
    {
        m_home = std::make_unique<SampleHome>();
        m_query.reset();
        m_isLocked = false;
    }

    void findsStores()
    {
        const StandardFolders &folders = m_home->platform.folders;
        QVERIFY(mailStores(folders).isEmpty());
        start();
        QVERIFY(!m_query->hasStores());
        QVERIFY(m_query->description().startsWith(u"none found; "_s));
        QCOMPARE(find(u"anything"_s), u""_s);
        QVERIFY(!QFileInfo::exists(folders.cache)); // nothing was made

        const QStringList mboxes{
            u".thunderbird/a.default/Mail/Local Folders/Inbox"_s,
            u".thunderbird/a.default/Mail/Local Folders/Inbox.sbd/Work & Größe"_s,
            u".thunderbird/a.default/ImapMail/imap.x.example/INBOX"_s,
            u".var/app/org.mozilla.Thunderbird/.thunderbird/b/Mail/x/Sent"_s,
            u"snap/thunderbird/common/.thunderbird/c/Mail/x/Archive"_s,
            u"elsewhere/Mail/x/Inbox"_s,
            u"Mail/lists"_s,
            u".mail/office/inbox"_s,
            u".local/share/local-mail/old"_s,
        };
        const QStringList maildirs{
            u".local/share/evolution/mail/local"_s,
            u".local/share/evolution/mail/local/.Family"_s,
            u".local/share/local-mail/inbox"_s,
            u".local/share/local-mail/.inbox.directory/sub"_s,
            u".local/share/mail/me"_s,
            u"Maildir"_s,
            u"Maildir/.Lists.qt"_s,
            u"snap/thunderbird/common/.thunderbird/c/Mail/x/Inbox"_s,
        };
        const QStringList leftOut{
            u".thunderbird/a.default/Mail/Local Folders/Trash"_s,
            u".thunderbird/a.default/Mail/Local Folders/Trash.sbd/Old"_s,
            u".thunderbird/a.default/Mail/Local Folders/Unsent Messages"_s,
            u".thunderbird/a.default/Mail/Local Folders/Drafts"_s,
            u".thunderbird/a.default/ImapMail/x/[Gmail].sbd/Spam"_s,
            u".thunderbird/a.default/Mail/Local Folders/Inbox.msf"_s,
            u".thunderbird/a.default/prefs.js"_s,
            u"Mail/Junk"_s,
            u"Mail/inbox/1234"_s, // of MH
        };
        const QStringList leftOutMaildirs{u".local/share/evolution/mail/local/.Trash"_s,
                                          u"Maildir/.INBOX.Junk"_s,
                                          u".local/share/local-mail/trash"_s};
        const SampleMessage message{.subject = "s", .text = "Found everywhere"};
        for (const QString &path : mboxes + leftOut)
            writeFile(m_home->path(path), inMbox({.subject = path.toUtf8(), .text = message.text}));
        for (const QString &path : maildirs + leftOutMaildirs)
            writeFile(m_home->path(path) + u"/cur/1:2,S"_s,
                      bytesOf({.subject = path.toUtf8(), .text = message.text}));
        writeFile(m_home->path(u".thunderbird/profiles.ini"_s),
                  "[Profile0]\nPath=" + m_home->path(u"elsewhere"_s).toUtf8() + '\n');
        QVERIFY(QFile::link(m_home->path(u"Mail"_s), m_home->path(u"mail"_s)));

        QStringList found;
        for (const MailItem &item : gather({.textOrSubject = u"everywhere"_s}, 100))
            found.append(item.subject.value());
        found.sort();
        QStringList expected = mboxes + maildirs;
        expected.sort();
        QCOMPARE(found, expected);
        const QString description = m_query->description();
        QCOMPARE(description,
                 u"Thunderbird, Evolution, KMail, Maildir and mbox, 17 messages in 17 folders"_s);
    }

    void knowsLeftOutFolders_data()
    {
        QTest::addColumn<bool>("isLeftOut");
        for (const char *name : {"Trash",
                                 "TRASH",
                                 "Trash.sbd",
                                 ".Trash",
                                 ".INBOX.Trash",
                                 "Junk E-mail",
                                 "Entw&APw-rfe",
                                 "Entwürfe",
                                 "Gelöschte Elemente",
                                 "Corbeille",
                                 ".trash.directory",
                                 "Deleted Items",
                                 "下書き",
                                 "Templates"})
            QTest::newRow(name) << true;
        for (const char *name : {"Inbox",
                                 "Sent",
                                 "Archive",
                                 "trashy",
                                 "drafts.example.com",
                                 "Q&A",
                                 "R&D",
                                 "&",
                                 "",
                                 ".",
                                 "Junkers"})
            QTest::newRow(name) << false;
    }
    void knowsLeftOutFolders()
    {
        QTEST(isLeftOutMailFolder(QString::fromUtf8(QTest::currentDataTag())), "isLeftOut");
    }

    void findsText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("subjects");
        const auto row = [](const char *name, const QString &text, const QString &subjects) {
            QTest::newRow(name) << text << subjects;
        };
        row("a phrase", u"quarterly budget"_s, u"Budget"_s);
        row("in another order", u"budget quarterly"_s, u""_s);
        row("part of words", u"arterly bud"_s, u"Budget"_s);
        row("case and marks", u"GRÖSSE"_s, u"Grosse Dinge|Größe"_s);
        row("across lines", u"review of the quarterly"_s, u"Budget"_s);
        row("blanks", u"  the \t quarterly"_s, u"Budget"_s);
        row("in the subject alone", u"budget"_s, u"Budget"_s);
        row("of subject and text", u"größe the"_s, u""_s);
        row("percent", u"100%"_s, u"Signs"_s);
        row("percent as any", u"1%0"_s, u""_s);
        row("underscore", u"a_b"_s, u"Signs"_s);
        row("star", u"c*d"_s, u"Signs"_s);
        row("star as any", u"quarter*budget"_s, u""_s);
        row("star as the beginning of a word", u"quarter*"_s, u""_s);
        row("question mark", u"e?f"_s, u"Signs"_s);
        row("question mark as any", u"quarterl? budget"_s, u""_s);
        row("quotes", u"\"it's\""_s, u"Signs"_s);
        row("an open quote", u"\"quarterly"_s, u""_s);
        row("operators", u"budget OR grosse"_s, u""_s);
        row("an operator that is there", u"this AND that NOT those"_s, u"Signs"_s);
        row("a column", u"subject:"_s, u""_s);
        row("the sender", u"acme.example"_s, u""_s);
        row("brackets", u"(a+b)^2 {c}"_s, u"Signs"_s);
        row("a backslash", u"\\n;--"_s, u"Signs"_s);
        row("NUL", u"a\0b"_s, u""_s);
        row("two letters", u"ßd"_s, u""_s);
        row("two signs", u"^2"_s, u"Signs"_s);
        row("Japanese", u"山田さん"_s, u"日本"_s);
        row("two of Japanese", u"山田"_s, u"日本"_s);
        row("beyond the first plane", u"👩🏽👩🏽👩🏽"_s, u"日本"_s);
        row("none", u"zebra"_s, u""_s);
        row("long", u"quarterly "_s.repeated(10'000), u""_s);
        row("all", u""_s, u"日本|Signs|Grosse Dinge|Größe|Budget"_s);
        row("marks alone", u"\u0301"_s, u"日本|Signs|Grosse Dinge|Größe|Budget"_s);
    }
    void findsText()
    {
        const QList<SampleMessage> messages{
            {.subject = "Budget", .text = "The review of\nthe   quarterly budget.", .date = 1000},
            {.subject = "=?utf-8?q?Gr=C3=B6=C3=9Fe?=", .text = "no", .date = 2000},
            {.subject = "Grosse Dinge", .text = "no", .date = 3000},
            {.subject = "Signs",
             .text = "100% a_b c*d e?f \"it's\" (a+b)^2 {c} \\n;-- this AND that NOT those",
             .date = 4000},
            {.subject = "=?utf-8?b?5pel5pys?=",
             .text = "山田さん 👩🏽👩🏽👩🏽",
             .date = 5000,
             .headers = "Content-Type: text/plain; charset=utf-8\n"},
        };
        QByteArray mbox;
        for (const SampleMessage &message : messages)
            mbox += inMbox(message);
        writeFile(inbox(), mbox);
        QFETCH(QString, text);
        QTEST(find(text), "subjects");
    }

    void heedsSendersAndDates()
    {
        QByteArray mbox;
        for (int i = 1; i <= 30; ++i)
            mbox += inMbox({.subject = "m" + QByteArray::number(i),
                            .text = "text",
                            .from = i % 2 ? "Jörg <joerg@acme.example>" : "\"\" <x@y.example>",
                            .date = i * 1000});
        mbox += "From - x\nSubject: undated\nDate: never\n\ntext\n\n";
        mbox += "From - y\n\ntext\n\n";
        writeFile(inbox(), mbox);
        const MailPredicate all{};
        QCOMPARE(gather(all, 100).size(), 32);
        QCOMPARE(gather(all, 20).size(), 20);
        QCOMPARE(gather(all, 0).size(), 0);
        const QList<MailItem> items = gather(all, 100);
        QCOMPARE(items[0].subject, u"m30"_s);
        QCOMPARE(items[0].authors, QStringList{u"x@y.example"_s});
        QCOMPARE(items[0].contentCreationDate, Instant::fromUnix(30'000));
        QCOMPARE(items[0].textContent, u"text"_s);
        QCOMPARE(items[0].path, inbox());
        QCOMPARE(items[1].authors, QStringList{u"Jörg"_s});
        QCOMPARE(items[29].subject, u"m1"_s);
        QVERIFY(!items[30].contentCreationDate && !items[31].contentCreationDate);
        QVERIFY(!items[30].subject && items[30].authors.isEmpty());

        const auto count = [&](const std::optional<QString> &sender, double start, double end) {
            const DateIntentParser::DateRange range{Instant::fromUnix(start),
                                                    Instant::fromUnix(end)};
            return gather({.textOrSubject = u"text"_s,
                           .authorEmailAddress = sender,
                           .contentCreationDate = range},
                          100)
                .size();
        };
        QCOMPARE(count({}, 2000, 5000), 4); // both ends belong to it
        QCOMPARE(count({}, 2000.5, 4999.5), 2);
        QCOMPARE(count(u"JOERG@ACME"_s, 2000, 5000), 2);
        QCOMPARE(count(u"x@y.example"_s, -1e300, 1e300), 15);
        QCOMPARE(count(u"@y"_s, 0, 1e9), 15);
        QCOMPARE(count(u"@"_s, 0, 1e9), 30);
        for (const auto &sign : {u"%"_s, u"*"_s, u"?"_s, u"\""_s}) // stand for themselves
            QCOMPARE(count(u"joerg"_s + sign, 0, 1e9) + count(sign, 0, 1e9), 0);
        QCOMPARE(count(u"robin@z.example"_s, 0, 1e9), 0);
        QCOMPARE(count({}, 5000, 2000), 0);
        QCOMPARE(count({}, std::nan(""), std::nan("")), 0);
    }

    void countsAMessageOfTwoFoldersOnce()
    {
        const SampleMessage message{
            .subject = "one", .text = "text", .headers = "Message-ID: <1@x>\n"};
        const SampleMessage other{.subject = "none", .text = "text"};
        writeFile(inbox(), inMbox(message) + inMbox(other) + inMbox(other));
        writeFile(profile(u"ImapMail/x/[Gmail].sbd/All Mail"_s), inMbox(other) + inMbox(message));
        QCOMPARE(find(u"text"_s).split(u'|').size(), 3); // no number tells the others to be one
    }

    void readsWhatGrows()
    {
        writeFile(inbox(),
                  inMbox({.subject = "one", .text = "text"}) + "From - x\nSubject: two\n\nte");
        QCOMPARE(find(u"text"_s), u"one"_s);
        appendFile(inbox(), "xt\n\n" + inMbox({.subject = "three", .text = "text", .date = 3}));
        QCOMPARE(find(u"text"_s), u"one|three|two"_s); // one with no date is last
        age(inbox());
        QCOMPARE(find(u"text"_s), u"one|three|two"_s);
        QCOMPARE(find(u"te"_s), u"one|three|two"_s); // the half message is gone
        appendFile(inbox(), inMbox({.subject = "four", .text = "text", .date = 2}));
        QCOMPARE(find(u"text"_s), u"one|three|four|two"_s);
    }

    /// Only what is new is read: what is changed before that, at the same length, is not seen.
    void readsTheNewPartAlone()
    {
        const QString path = m_home->path(u"Mail/lists"_s);
        const QByteArray old = inMbox({.subject = "old", .text = "text"});
        const QByteArray last = inMbox({.subject = "last", .text = "text"});
        writeFile(path, old + last);
        age(path, 60);
        QCOMPARE(find(u"text"_s), u"last|old"_s);
        QByteArray changed = old;
        writeFile(path,
                  changed.replace("old", "odd") + last
                      + inMbox({.subject = "new", .text = "text"}));
        age(path, 30);
        QCOMPARE(find(u"text"_s), u"new|last|old"_s);
        age(path, 20); // now it has changed where it is
        QCOMPARE(find(u"text"_s), u"odd|new|last"_s);
    }

    void followsCompaction()
    {
        const auto message = [](const QByteArray &subject, const QByteArray &status) {
            return inMbox({.subject = subject,
                           .text = "text",
                           .headers = "X-Mozilla-Status: " + status + "\n"});
        };
        writeFile(inbox(), message("a", "0001") + message("b", "0001") + message("c", "0000"));
        age(inbox(), 60);
        QCOMPARE(find(u"text"_s), u"c|b|a"_s);
        // Deleted: marked where it is, and another came.
        writeFile(inbox(),
                  message("a", "0001") + message("b", "000d") + message("c", "0001")
                      + message("d", "0000"));
        age(inbox(), 50);
        QCOMPARE(find(u"text"_s), u"d|c|a"_s);
        // Marked, and nothing else.
        writeFile(inbox(),
                  message("a", "0009") + message("b", "000d") + message("c", "0001")
                      + message("d", "0000"));
        age(inbox(), 40);
        QCOMPARE(find(u"text"_s), u"d|c"_s);
        // Compacted.
        writeFile(inbox(), message("c", "0001") + message("d", "0000"));
        QCOMPARE(find(u"text"_s), u"d|c"_s);
        writeFile(inbox(), message("e", "0000"));
        QCOMPARE(find(u"text"_s), u"e"_s);
        writeFile(inbox(), "");
        QCOMPARE(find(u"text"_s), u""_s);
        writeFile(inbox(), message("f", "0000"));
        QCOMPARE(find(u"text"_s), u"f"_s);
        QVERIFY(QFile::remove(inbox()));
        QCOMPARE(find(u"text"_s), u""_s);
    }

    void followsMaildirs()
    {
        const QString folder = m_home->path(u"Maildir"_s);
        writeFile(folder + u"/new/1.host"_s, bytesOf({.subject = "a", .text = "text"}));
        writeFile(folder + u"/cur/2.host:2,S"_s, bytesOf({.subject = "b", .text = "text"}));
        writeFile(folder + u"/tmp/3.host"_s, bytesOf({.subject = "c", .text = "text"}));
        writeFile(folder + u"/cur/.hidden"_s, bytesOf({.subject = "d", .text = "text"}));
        QCOMPARE(find(u"text"_s), u"b|a"_s);
        QVERIFY(QFile::rename(folder + u"/new/1.host"_s, folder + u"/cur/1.host:2,RS"_s));
        QCOMPARE(find(u"text"_s), u"b|a"_s);
        QCOMPARE(gather({.textOrSubject = u"text"_s})[1].path, folder + u"/cur/1.host:2,RS"_s);
        QVERIFY(QFile::remove(folder + u"/cur/2.host:2,S"_s));
        writeFile(folder + u"/new/4.host"_s, bytesOf({.subject = "e", .text = "text"}));
        QCOMPARE(find(u"text"_s), u"e|a"_s);
        QVERIFY(QDir(folder).removeRecursively());
        QCOMPARE(find(u"text"_s), u""_s);
    }

    /// What cannot be read now is not taken for gone.
    void keepsWhatCannotBeRead()
    {
        const QString folder = m_home->path(u"Maildir"_s);
        writeFile(folder + u"/new/1.host"_s, bytesOf({.subject = "a", .text = "text"}));
        writeFile(folder + u"/cur/2.host:2,S"_s, bytesOf({.subject = "b", .text = "text"}));
        QCOMPARE(find(u"text"_s), u"b|a"_s);
        QVERIFY(QFile::rename(folder + u"/new"_s, m_home->path(u"away"_s)));
        QVERIFY(QFile::link(u"new"_s, folder + u"/new"_s)); // leads to itself
        QCOMPARE(find(u"text"_s), u"b|a"_s);
        QVERIFY(QFile::remove(folder + u"/new"_s));
        QCOMPARE(find(u"text"_s), u"b"_s);
    }

    void keepsWhatIsInAFolderThatCannotBeRead()
    {
        if (::geteuid() == 0)
            QSKIP("root may read everything");
        const QString folder = m_home->path(u"Mail/lists"_s);
        writeFile(folder + u"/one"_s, inMbox({.subject = "a", .text = "text"}));
        writeFile(folder + u"/sub/two"_s, inMbox({.subject = "b", .text = "text"}));
        writeFile(folder + u"/cur/1"_s, bytesOf({.subject = "d", .text = "text"}));
        writeFile(m_home->path(u"Mail/lists-too"_s), inMbox({.subject = "c", .text = "text"}));
        QCOMPARE(find(u"text"_s).split(u'|').size(), 4);
        QVERIFY(QFile::remove(m_home->path(u"Mail/lists-too"_s)));
        for (const QFile::Permissions some :
             {QFile::Permissions(), QFile::Permissions(QFile::ReadOwner)}) {
            QVERIFY(QFile::setPermissions(folder, some));
            QCOMPARE(find(u"text"_s).split(u'|').size(), 3);
        }
        QVERIFY(
            QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QVERIFY(QFile::remove(folder + u"/one"_s) && QFile::remove(folder + u"/cur/1"_s));
        QCOMPARE(find(u"text"_s), u"b"_s);
    }

    /// All that is wrong with some messages leaves the others as they are.
    void survivesWhatIsMadeToHarm()
    {
        const SampleMessage good{.subject = "good", .text = "text"};
        QByteArray nested = "From - x\nSubject: nested\n";
        for (int i = 0; i < 10'000; ++i) {
            const QByteArray boundary = 'b' + QByteArray::number(i);
            nested +=
                "Content-Type: multipart/mixed; boundary=" + boundary + "\n\n--" + boundary + '\n';
        }
        const QByteArray endless =
            "From - x\nSubject: endless\n\n" + QByteArray(10'000'000, 'x') + "\n\n";
        const QByteArray lying =
            "From - x\nSubject: lying\nContent-Length: 999999999\nDate: Mon, 99 Foo 99999 99:99\n"
            "Content-Type: text/plain; charset=utf-8\nContent-Transfer-Encoding: "
            "base64\n\n!!text\xFF\n\n";
        writeFile(inbox(),
                  inMbox(good) + nested + '\n' + endless + lying
                      + inMbox({.subject = "after", .text = "text"}) + "From - x\nSubject: cut in");
        QCOMPARE(find(u"text"_s), u"after|good"_s);
        QCOMPARE(find(u"xxxx"_s), u"endless"_s);
        QCOMPARE(find(u"cut in"_s), u"cut in"_s);
        writeFile(profile(u"Mail/x/Archive"_s), "From here on this is no mbox\n\ntext");
        writeFile(profile(u"Mail/x/Binary"_s), QByteArray(100'000, '\0') + "\n\nFrom - x\n\ntext");
        QVERIFY(QFile::link(u"/dev/zero"_s, profile(u"Mail/x/Endless"_s)));
        QCOMPARE(find(u"text"_s), u"after|good"_s);
    }

    void makesADamagedIndexAnew_data()
    {
        QTest::addColumn<qint64>("from");
        QTest::addColumn<qint64>("size");
        QTest::newRow("no database") << qint64{0} << qint64{100};
        QTest::newRow("pages") << qint64{8192} << qint64{1'000'000};
        QTest::newRow("version") << qint64{60} << qint64{4};
    }
    void makesADamagedIndexAnew()
    {
        QByteArray mbox;
        for (int i = 0; i < 200; ++i)
            mbox += inMbox({.subject = "s", .text = "text " + QByteArray::number(i).repeated(99)});
        writeFile(inbox(), mbox);
        age(inbox());
        QCOMPARE(gather({.textOrSubject = u"text"_s}).size(), 20);
        const QString path = MailIndex::path(m_home->platform.folders.cache);
        QFETCH(qint64, from);
        QFETCH(qint64, size);
        QFile file(path);
        QVERIFY(file.open(QFile::ReadWrite));
        const qint64 length = std::min(size, file.size() - from);
        QVERIFY(length > 0 && file.seek(from));
        QCOMPARE(file.write(QByteArray(length, 'x')), length);
        file.close();
        // The search that finds the damage finds nothing else.
        QTRY_COMPARE(gather({.textOrSubject = u"text"_s}).size(), 20);
        QCOMPARE(QFile::permissions(path) & ~(QFile::ReadUser | QFile::WriteUser),
                 QFile::ReadOwner | QFile::WriteOwner);
    }

    /// Else what is known would be read anew, or stay for ever.
    void takesNoReadErrorForNothing_data()
    {
        using Read = std::function<void(MailIndexWriter &)>;
        QTest::addColumn<Read>("read");
        QTest::newRow("keys") << Read([](auto &index) { std::ignore = index.keys(1); });
        QTest::newRow("all keys") << Read([](auto &index) { std::ignore = index.allKeys(1); });
        QTest::newRow("names") << Read([](auto &index) { std::ignore = index.names(1); });
    }
    void takesNoReadErrorForNothing()
    {
        writeFile(inbox(), inMbox({.subject = "a", .text = "text"}));
        QCOMPARE(find(u"text"_s), u"a"_s);
        const QString path = MailIndex::path(m_home->platform.folders.cache);
        qint64 page = 0;
        {
            const SQLiteDatabase database = SQLiteDatabase::own(path);
            SQLiteStatement root =
                database.prepare("SELECT rootpage FROM sqlite_master WHERE name = 'item'");
            QVERIFY(root.step());
            page = root.integer(0);
        }
        QFile file(path);
        QVERIFY(file.open(QFile::ReadWrite) && file.seek((page - 1) * 4096));
        QCOMPARE(file.write(QByteArray(4096, 'x')), 4096);
        file.close();
        MailIndexWriter index(m_home->platform.folders.cache);
        QVERIFY(!index.hasFailed());
        QFETCH(std::function<void(MailIndexWriter &)>, read);
        read(index);
        QVERIFY(index.hasFailed() && index.isDamaged());
    }

    void keepsAnIndexThatIsInUse()
    {
        writeFile(inbox(), inMbox({.subject = "a", .text = "text"}));
        QCOMPARE(find(u"text"_s), u"a"_s);
        const QByteArray path = QFile::encodeName(MailIndex::path(m_home->platform.folders.cache));
        const FileDescriptor file(::open(path.constData(), O_RDWR | O_CLOEXEC));
        struct stat before = {};
        QCOMPARE(::fstat(file.get(), &before), 0);
        struct flock whole = {};
        whole.l_type = F_WRLCK;
        QCOMPARE(::fcntl(file.get(), F_OFD_SETLK, &whole), 0);
        update();
        struct stat after = {};
        QCOMPARE(::stat(path.constData(), &after), 0);
        QCOMPARE(after.st_ino, before.st_ino);
        whole.l_type = F_UNLCK;
        QCOMPARE(::fcntl(file.get(), F_OFD_SETLK, &whole), 0);
        appendFile(inbox(), inMbox({.subject = "b", .text = "text"}));
        QCOMPARE(find(u"text"_s), u"b|a"_s);
    }

    void changesNothing()
    {
        writeFile(inbox(), inMbox({.subject = "a", .text = "text"}));
        writeFile(inbox() + u".msf"_s, "summary");
        writeFile(m_home->path(u"Maildir/cur/1"_s), bytesOf({.subject = "b", .text = "text"}));
        writeFile(m_home->path(u"Mail/lists"_s), "From - x\nSubject: c\n\ncut te");
        const QByteArray before = fingerprint(m_home->folder.path());
        QCOMPARE(find(u"te"_s), u"b|a|c"_s);
        QVERIFY(QDir(m_home->path(u".cache"_s)).removeRecursively());
        QCOMPARE(fingerprint(m_home->folder.path()), before);
    }

    void anotherProcessMayWrite()
    {
        writeFile(inbox(), inMbox({.subject = "a", .text = "text"}));
        QCOMPARE(find(u"text"_s), u"a"_s);
        const FileLock lock(m_home->platform.folders.cache + u"/mail.lock"_s);
        QCOMPARE(lock.state(), FileLock::State::held);
        m_isLocked = true;
        appendFile(inbox(), inMbox({.subject = "b", .text = "text"}));
        QCOMPARE(find(u"text"_s), u"a"_s); // from what is there
    }

    void answersOffThisThread()
    {
        writeFile(inbox(), inMbox({.subject = "a", .text = "text"}));
        start();
        QCOMPARE(QCoro::waitFor(m_query->gather({.textOrSubject = u"text"_s}, 20)).size(), 1);
        appendFile(inbox(), inMbox({.subject = "b", .text = "text"}));
        QTRY_COMPARE(QCoro::waitFor(m_query->gather({.textOrSubject = u"text"_s}, 20)).size(), 2);
        DesktopMailQuery none(m_home->platform.folders, u"/nonexistent"_s);
        QCOMPARE(QCoro::waitFor(none.gather({}, 20)).size(), 2);
    }

    void readsAgainWhatComesMeanwhile()
    {
        const QString started = m_home->path(u"started"_s);
        const QString mayGoOn = m_home->path(u"may-go-on"_s);
        const QString program = m_home->path(u"extract"_s);
        writeFile(program,
                  "#!/bin/sh\n: >" + QFile::encodeName(started) + "\nuntil test -e "
                      + QFile::encodeName(mayGoOn)
                      + "; do /bin/sleep 0.01; done\nexec " DUGWISE_EXTRACT " \"$@\"\n");
        QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
        writeFile(inbox(), inMbox({.subject = "a", .text = "text"}));
        MailIndexer indexer(m_home->platform.folders, program);
        indexer.update(false);
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(started), 60'000);
        writeFile(profile(u"Mail/x/Archive"_s), inMbox({.subject = "b", .text = "text"}));
        indexer.update(false);
        writeFile(mayGoOn, "");
        MailIndex index(m_home->platform.folders.cache);
        QTRY_COMPARE_WITH_TIMEOUT(index.summary().messages, 2, 60'000);
    }

    void tellsHowFarItIs()
    {
        constexpr int kCount = 9000;
        for (int i = 0; i < kCount; ++i)
            writeFile(m_home->path(u"Maildir/%1/cur/%2:2,S"_s.arg(i % 2 ? u"a"_s : u"b"_s).arg(i)),
                      bytesOf({.subject = "s", .text = "text"}));
        MailIndexer indexer(m_home->platform.folders, QStringLiteral(DUGWISE_EXTRACT));
        const std::shared_future<void> current = indexer.update(false);
        MailIndex::Summary summary;
        const auto isUnderWay = [&] {
            summary = MailIndex(m_home->platform.folders.cache).summary();
            return summary.messages > 0;
        };
        QTRY_VERIFY_WITH_TIMEOUT(isUnderWay(), 60'000);
        if (summary.messages < kCount)
            QCOMPARE(summary.percent, static_cast<int>(summary.messages * 100 / kCount));
        current.wait();
        QVERIFY(isUnderWay());
        QCOMPARE(summary.messages, kCount);
        QCOMPARE(summary.percent, 100);
    }

    void endsInTheMiddleOfRemoving()
    {
        QByteArray mbox;
        for (int i = 0; i < 5000; ++i)
            mbox += inMbox({.subject = "s" + QByteArray::number(i), .text = "text"});
        writeFile(inbox(), mbox);
        age(inbox());
        update();
        const QString cache = m_home->platform.folders.cache;
        {
            std::stop_source stop;
            MailIndexWriter index(cache, stop.get_token());
            const qint64 folder = index.folders().value(inbox()).id;
            int count = 0;
            index.begin();
            for (const MailIndexWriter::Key &key : index.allKeys(folder)) {
                if (++count == 4500)
                    stop.request_stop();
                index.remove(folder, key);
            }
            index.commit();
            QVERIFY(index.hasFailed() && !index.isDamaged());
        }
        QCOMPARE(MailIndex(cache).summary().messages, 5000 - 4096); // the others were rolled back
        update(); // the folder is as it was, and is not taken for known
        QCOMPARE(MailIndex(cache).summary().messages, 5000);
        QVERIFY(QFile::remove(inbox()));
        update();
        QCOMPARE(MailIndex(cache).summary().messages, 0);
    }

    void endsInTheMiddle()
    {
        QByteArray mbox;
        for (int i = 0; i < 20'000; ++i)
            mbox += inMbox({.subject = "s" + QByteArray::number(i), .text = "text"});
        writeFile(inbox(), mbox);
        start();
        m_query->prepare();
        m_query.reset();
        QVERIFY(childProcesses().isEmpty());
        QCOMPARE(gather({.textOrSubject = u"s19999"_s}).size(), 1);
        QCOMPARE(MailIndex(m_home->platform.folders.cache).summary().messages, 20'000);
        QCOMPARE(MailIndex(m_home->platform.folders.cache).summary().percent, 100);
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstDesktopMailQuery)
#include "tst_DesktopMailQuery.moc"
