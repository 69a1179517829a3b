// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MboxReader.h"
#include "Platform/MailParser.h"
#include "support/SampleFiles.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>

using namespace Qt::StringLiterals;

namespace dugwise::test {

class TstMboxReader : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    [[nodiscard]] QList<MboxReader::Message> read(const QByteArray &content, qint64 offset = 0)
    {
        const QString path = m_folder.filePath(u"mbox"_s);
        writeFile(path, content);
        MboxReader reader(FileDescriptor(::open(QFile::encodeName(path), O_RDONLY | O_CLOEXEC)),
                          offset);
        QList<MboxReader::Message> messages;
        while (const std::optional<MboxReader::Message> message = reader.next())
            messages.append(*message);
        return messages;
    }

private Q_SLOTS:
    void partsMessages_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QByteArray>("messages");
        const auto row =
            [](const char *name, const QByteArray &content, const QByteArray &messages) {
                QTest::newRow(name) << content << messages;
            };
        const QByteArray from = "From me@x.example Sat Jan  3 01:05:34 1996\n";
        row("two",
            from + "A: 1\n\none\n\n" + from + "A: 2\n\ntwo\n\n",
            "[A: 1\n\none][A: 2\n\ntwo]");
        row("CRLF",
            "From - Sat\r\nA: 1\r\n\r\none\r\n\r\nFrom - Sun\r\nA: 2\r\n\r\n",
            "[A: 1\r\n\r\none][A: 2]");
        row("cut in mid-message",
            from + "A: 1\n\none\n\n" + from + "A: 2\n\ntw",
            "[A: 1\n\none][A: 2\n\ntw]");
        row("cut in a separator", from + "A: 1\n\none\n\nFrom me@x", "[A: 1\n\none\n\nFrom me@x]");
        row("zones",
            from + "A\n\nFrom a Sat Jan  3 01:05:34 1996 +0100\nB\n\nFrom b 01:05 1996 GMT  \nC",
            "[A][B][C]");
        row("not marked",
            from
                + "A: 1\n\nFrom here on\nFrom Sat 01:05 1996\n\nFrom 1995 to 1996\n\nFrom: 1:2 "
                  "19967\n",
            "[A: 1\n\nFrom here on\nFrom Sat 01:05 1996\n\nFrom 1995 to 1996\n\nFrom: 1:2 19967]");
        row("marked", from + "\n>From - x\n", "[\n>From - x]");
        row("empty messages", from + "\n" + from + "\n\n" + from, "[][][]");
        row("no mbox", "From me to you,\n\nI write.\n\n" + from + "A\n", "");
        row("something before", "\n" + from + "A\n", "");
        row("empty", "", "");
        row("one line without end", "From - " + QByteArray(5000, 'x'), "");
        const QByteArray longLine = "A\n\nFrom - " + QByteArray(2000, 'x') + "\nB";
        row("a long line within", from + longLine + "\n\n" + from + "C\n", '[' + longLine + "][C]");
    }
    void partsMessages()
    {
        QFETCH(QByteArray, content);
        QByteArray all;
        for (const MboxReader::Message &message : read(content))
            all += '[' + message.bytes + ']';
        QTEST(all, "messages");
    }

    /// Whatever falls on the border of two pieces that are read.
    void findsEverySeparator()
    {
        QRandomGenerator random(3);
        QByteArray content;
        QList<qint64> starts;
        while (content.size() < 6'000'000) {
            starts.append(content.size());
            const QByteArray end = starts.size() % 2 == 0 ? "\r\n" : "\n";
            content += "From x 01:05 1996" + end + "A: 1" + end + end;
            for (int line = random.bounded(400); line > 0; --line)
                content += QByteArray(random.bounded(100), 'F') + (line % 9 ? end : "\nFrom ");
            content += end + end;
        }
        QList<qint64> found;
        for (const MboxReader::Message &message : read(content))
            found.append(message.start);
        QCOMPARE(found, starts);
        QCOMPARE(read(content, starts[7]).size(), starts.size() - 7);
        QVERIFY(read(content, starts[7] + 1).isEmpty());
    }

    void cutsWhatIsTooLarge()
    {
        const QByteArray line(10'000'000, 'x');
        const QList<MboxReader::Message> messages =
            read("From - a\n" + line + "\n\nFrom - b\nB: 1\n\nb\n");
        QCOMPARE(messages.size(), 2);
        QCOMPARE(messages[0].bytes, line.first(MailParser::kMostMessage));
        QCOMPARE(messages[1].bytes, "B: 1\n\nb"_ba);
    }

    void tellsFailureFromTheEnd()
    {
        MboxReader folder(
            FileDescriptor(::open(QFile::encodeName(m_folder.path()), O_RDONLY | O_CLOEXEC)));
        QVERIFY(!folder.next() && folder.hasFailed());
        const QString path = m_folder.filePath(u"mbox"_s);
        writeFile(path, "From - x\n\ntext\n");
        MboxReader whole(FileDescriptor(::open(QFile::encodeName(path), O_RDONLY | O_CLOEXEC)));
        QVERIFY(whole.next() && !whole.next() && !whole.hasFailed());
    }

    void knowsMessagesAgain()
    {
        const QByteArray text = "\nX-Mozilla-Status: 0009\n\n\n";
        const QByteArray header = "X-Mozilla-Keys:   \nSubject: a\n";
        const QList<MboxReader::Message> messages = read(
            "From - a\nX-Mozilla-Status: 0001\n" + header + text
            + "From - b\r\nX-Mozilla-Status: 000d\nX-Mozilla-Status2: 00000008\n" + header + text
            + "From - c\n" + header + text + "From - d\n" + header + "Subject: b\n" + text);
        QCOMPARE(messages.size(), 4);
        QCOMPARE(messages[1].key, messages[0].key);
        QCOMPARE(messages[2].key, messages[0].key);
        QVERIFY(messages[3].key != messages[0].key);
        QVERIFY(!messages[0].isExpunged && messages[1].isExpunged);
        QVERIFY(!messages[2].isExpunged && !messages[3].isExpunged);
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstMboxReader)
#include "tst_MboxReader.moc"
