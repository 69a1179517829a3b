// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/MailParser.h"
#include "support/ChildProcesses.h"
#include "support/SampleFiles.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace dugwise::test {

class TstMailParser : public QObject
{
    Q_OBJECT

private:
    MailParser m_parser{QStringLiteral(DUGWISE_EXTRACT)};

    [[nodiscard]] std::optional<ParsedMail> parse(const QByteArray &message)
    {
        return m_parser.parse({message}, {}).value(0);
    }
    static QByteArray multipart(const QByteArray &kind, const QList<QByteArray> &parts)
    {
        QByteArray message = "Content-Type: multipart/" + kind + "; boundary=\"=b\"\n\npreamble\n";
        for (const QByteArray &part : parts)
            message += "--=b\n" + part + '\n';
        return message + "--=b--\nepilogue\n";
    }

private Q_SLOTS:
    void readsHeaders_data()
    {
        QTest::addColumn<QByteArray>("headers");
        QTest::addColumn<QString>("told"); // subject|authors|addresses|identifier
        const auto row = [](const char *name, const QByteArray &headers, const QString &told) {
            QTest::newRow(name) << headers << told;
        };
        row("plain",
            "Subject: Budget  review\nFrom: Sarah Chen <sarah@acme.example>\nMessage-ID: <1@x>",
            u"Budget review|Sarah Chen|sarah@acme.example|1@x"_s);
        row("CRLF", "Subject: a\r\n b\r\nFrom: <x@y.example>\r", u"a b|x@y.example|x@y.example|"_s);
        row("none", "X-Other: 1", u"|||"_s);
        row("encoded words",
            "Subject: =?UTF-8?Q?Gr=C3=B6=C3=9Fe?= =?ISO-8859-15?Q?_=A4_5?=\n"
            "From: =?iso-2022-jp?B?GyRCOzNFRBsoQg==?= <y@z.example>",
            u"Größe € 5|山田|y@z.example|"_s);
        row("not encoded at all",
            "Subject: caf\xE9 \x80 5\nFrom: J\xC3\xB6rg <j@k.example>",
            u"café € 5|Jörg|j@k.example|"_s);
        row("several and a group",
            "From: \"Chen, Sarah\" <s@a.example>, friends: Bo <b@a.example>, c@a.example;",
            u"|Chen, Sarah,Bo,c@a.example|s@a.example,b@a.example,c@a.example|"_s);
        row("a line feed in a name",
            "From: =?utf-8?q?a=0Ab?= <c@d.example>",
            u"|a b|c@d.example|"_s);
        row("a lying encoding", "Subject: =?utf-8?q?a=FFb?= =?x-no-such?q?c=E4?=", u"a?bcä|||"_s);
        row("long", "Subject: " + QByteArray(10'000'000, 'a'), QString(4096, u'a') + u"|||"_s);
    }
    void readsHeaders()
    {
        QFETCH(QByteArray, headers);
        const std::optional<ParsedMail> mail = parse(headers + "\n\ntext");
        QVERIFY(mail);
        QCOMPARE(mail->text, "text"_ba);
        QTEST(QString::fromUtf8(mail->subject + '|' + mail->authors.join(',') + '|'
                                + mail->addresses.join(',') + '|' + mail->identifier),
              "told");
    }

    void readsDates_data()
    {
        QTest::addColumn<QByteArray>("date");
        QTest::addColumn<std::optional<qint64>>("seconds");
        const auto row = [](const QByteArray &date, std::optional<qint64> seconds) {
            QTest::newRow(date.constData()) << date << seconds;
        };
        row("Thu, 1 Jan 2026 12:00:00 +0000", 1'767'268'800);
        row("Thu, 1 Jan 2026 12:00:00 +0200", 1'767'261'600);
        row("1 Jan 26 12:00 EST", 1'767'286'800);
        row("Thu, 1 Jan 2026 12:00:00", 1'767'268'800);
        row("", std::nullopt);
        row("yesterday", std::nullopt);
        row("Mon, 31 Feb 2025 99:99:99 +9999", std::nullopt);
        row("Wed, 31 Dec 1969 23:00:00 +0000", std::nullopt);
        row("Fri, 1 Jan 99999999999999 00:00:00 +0000", std::nullopt);
    }
    void readsDates()
    {
        QFETCH(QByteArray, date);
        const std::optional<ParsedMail> mail = parse("Date: " + date + "\nSubject: s\n\nt");
        QVERIFY(mail);
        QCOMPARE(mail->subject, "s"_ba);
        QTEST(mail->date, "seconds");
    }

    void readsTexts_data()
    {
        QTest::addColumn<QByteArray>("message");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, const QByteArray &message, const QString &text) {
            QTest::newRow(name) << message << text;
        };
        const QByteArray html = "Content-Type: text/html; charset=utf-8\n\n";
        const QByteArray plain = "Content-Type: text/plain; charset=utf-8\n\n";
        row("white space", "X: 1\n\n  a\n\n\tb\r\nc \xC2\xA0 d\v\n\n", u"a b c d"_s);
        row("no header", "\nabc", u"abc"_s);
        row("no charset", "X: 1\n\nna\xEFve \x93quoted\x94", u"naïve “quoted”"_s);
        row("quoted-printable",
            "Content-Type: text/plain; charset=iso-8859-1\n"
            "Content-Transfer-Encoding: quoted-printable\n\nGr=FC=DFe, one=\nline",
            u"Grüße, oneline"_s);
        row("base64, cut",
            "Content-Type: text/plain; charset=utf-8\nContent-Transfer-Encoding: base64\n\n"
            "QnVkZ2V0IHJldmll",
            u"Budget revie"_s);
        row("Shift_JIS",
            "Content-Type: text/plain; charset=Shift_JIS\n\n\x8E\x52\x93\x63",
            u"山田"_s);
        row("a lying charset",
            "Content-Type: text/plain; charset=utf-8\n\na\xFFz \xC3\xA9",
            u"aÿz é"_s);
        row("no such charset", "Content-Type: text/plain; charset=klingon\n\nabc", u"abc"_s);
        row("control characters", plain + QByteArray("a\0b\x1B[2Jc\x7F", 9), u"a b [2Jc"_s);
        row("HTML",
            html
                + "<html><head><title>T</title><style>p {}</style></head><body><p>One &amp; "
                  "<b>tw</b>o<br>three</p><!-- <p>no</p> --><script>if (a < b) x();</script>"
                  "<table><tr><td>4</td><td>&euro;5</td></tr></table>&#x20AC;6 &uuml;&nope; a<5",
            u"One & two three 4 €5 €6 ü&nope; a<5"_s);
        row("damaged HTML", html + "a<p title='>'>b<p title=\"c>d</p><!-- <script>e", u"a b d"_s);
        row("alternatives",
            multipart("alternative", {plain + "plain", html + "<p>markup"}),
            u"plain"_s);
        row("an empty alternative",
            multipart("alternative", {plain + " \n", html + "<p>mark<i>up"}),
            u"markup"_s);
        row("mixed",
            multipart("mixed",
                      {plain + "one",
                       html + "two",
                       "Content-Type: text/plain\nContent-Disposition: attachment\n\nfile",
                       "Content-Type: image/png\n\nbytes",
                       "Content-Type: text/calendar\n\nBEGIN",
                       "Content-Type: message/rfc822\n\nSubject: inner\n\ninner"}),
            u"one two"_s);
        row("no end",
            "Content-Type: multipart/mixed; boundary=b\n\n--b\n\ncut in mid-se",
            u"cut in mid-se"_s);
        row("no boundary", "Content-Type: multipart/mixed\n\nabc", u""_s);
        row("long",
            plain + QByteArray("0123456789").repeated(1'000'000),
            u"0123456789"_s.repeated(6554).left(65536));
        row("nothing", "", u""_s);
    }
    void readsTexts()
    {
        QFETCH(QByteArray, message);
        const std::optional<ParsedMail> mail = parse(message);
        QVERIFY(mail);
        QTEST(QString::fromUtf8(mail->text), "text");
    }

    /// Parts in parts, parts without end, and headers without end.
    void survivesWhatIsMadeToHarm_data()
    {
        QTest::addColumn<QByteArray>("message");
        QByteArray nested = "Subject: s\n";
        QByteArray wide = "Subject: s\nContent-Type: multipart/mixed; boundary=b\n\n";
        QByteArray headers = "Subject: s\n";
        QByteArray addresses = "Subject: s\nFrom: ";
        for (int i = 0; i < 10'000; ++i) {
            const QByteArray boundary = "b" + QByteArray::number(i);
            nested +=
                "Content-Type: multipart/mixed; boundary=" + boundary + "\n\n--" + boundary + '\n';
            wide += "--b\nContent-Type: text/plain\n\nt\n";
            headers += "X-" + boundary + ": " + QByteArray(100, 'x') + '\n';
            addresses += "g" + boundary + ": a" + boundary + "@x.example;, ";
        }
        QTest::newRow("10,000 nested parts") << nested + "\ndeep";
        QTest::newRow("10,000 parts") << wide;
        QTest::newRow("10,000 headers") << headers + "\ntext";
        QTest::newRow("10,000 groups") << addresses + "\n\ntext";
        QTest::newRow("brackets") << "Subject: s\nFrom: " + QByteArray(100'000, '(') + "\n\ntext";
        QTest::newRow("open tags")
            << "Subject: s\nContent-Type: text/html\n\n" + QByteArray("<a b='&#").repeated(200'000);
    }
    void survivesWhatIsMadeToHarm()
    {
        QFETCH(QByteArray, message);
        const QByteArray plain = "Subject: after\n\ntext";
        const QList<std::optional<ParsedMail>> mails = m_parser.parse({plain, message, plain}, {});
        QCOMPARE(mails.size(), 3);
        QVERIFY(mails[0] && mails[2]);
        QCOMPARE(mails[2]->subject, "after"_ba);
        if (mails[1])
            QCOMPARE(mails[1]->subject, "s"_ba);
    }

    void isConfined()
    {
        QVERIFY(parse("Subject: a\n\nb"));
        QCOMPARE(childProcesses().size(), 1);
        const QByteArray status = readFile(u"/proc/%1/status"_s.arg(childProcesses().first()));
        QVERIFY2(status.contains("NoNewPrivs:\t1") && status.contains("Seccomp:\t2"),
                 status.constData());
    }

    void goesOnWhenTheParserDies()
    {
        QVERIFY(parse("Subject: a\n\nb"));
        signalChildProcesses(SIGKILL); // while it has nothing to do
        const QList<QByteArray> messages{"Subject: one\n\n", "Subject: two\n\n"};
        const QList<std::optional<ParsedMail>> mails = m_parser.parse(messages, {});
        QCOMPARE(mails.size(), 2);
        QVERIFY(mails[0] && mails[1]);
        QCOMPARE(mails[1]->subject, "two"_ba);
        std::stop_source stop;
        stop.request_stop();
        QVERIFY(m_parser.parse(messages, stop.get_token()).isEmpty());
        MailParser none(u"/nonexistent"_s);
        QVERIFY(none.parse(messages, {}).isEmpty());
    }

    /// A parser that dies over the second message it is given: when there are more, when it is
    /// alone, and never again.
    void leavesOutWhatKillsTheParser()
    {
        const QTemporaryDir folder;
        const QString program = folder.filePath(u"parser"_s);
        writeFile(program, R"(#!/usr/bin/perl
            open my $socket, '+<&=', 3;
            binmode $socket;
            my $round = () = glob '@/*';
            open my $mark, '>', "@/$round";
            syswrite $socket, pack('lL', 0, 1) . "p\0";
            for my $last (1) {
                sysread $socket, my $request, 8 or last;
                my ($subject, $count) = unpack 'LL', $request;
                my $answers = $round == 0 ? 1 : $round == 1 ? 0 : $count;
                syswrite $socket, pack('qL5x4', 7, 2, 0, 0, 0, 0) . "s$round" for 1 .. $answers;
                redo if $answers == $count;
            }
        )"_ba.replace('@', folder.filePath(u"rounds"_s).toUtf8()));
        QVERIFY(QDir(folder.path()).mkdir(u"rounds"_s));
        QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
        MailParser parser(program);
        const QList<std::optional<ParsedMail>> mails = parser.parse({"1", "2", "3", "4"}, {});
        QByteArray subjects;
        for (const std::optional<ParsedMail> &mail : mails)
            subjects += mail ? mail->subject + ' ' : "none ";
        QCOMPARE(subjects, "s0 none s2 s2 "_ba);
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstMailParser)
#include "tst_MailParser.moc"
