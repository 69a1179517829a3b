// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Indexes the mail of a profile of Thunderbird, a folder of many messages, looks at it again, and
// searches it; then the same messages in a Maildir. The messages are of English: plain, as
// quoted-printable with an HTML alternative, HTML in base64, and one in ten with an attachment. Two
// in three have a common word.
// usage: bench_mail [MESSAGES [ROUNDS]]     (taskset -c 0 bench_mail ...: on one processor)

#include "Measure.h"
#include "Platform/Linux/MailIndex.h"
#include "Platform/Linux/MailUpdate.h"
#include "SampleText.h"
#include "support/SampleHome.h"
#include "support/SampleMail.h"

#include <QCoreApplication>

#include <sys/resource.h>

#include <algorithm>
#include <vector>

using namespace dugwise;
using namespace dugwise::bench;
using namespace dugwise::test;
using namespace Qt::StringLiterals;

namespace {

QByteArray base64Lines(const QByteArray &content)
{
    const QByteArray encoded = content.toBase64();
    QByteArray lines;
    for (qsizetype at = 0; at < encoded.size(); at += 76)
        lines += encoded.mid(at, 76) + '\n';
    return lines;
}

QByteArray quotedPrintable(const QByteArray &content)
{
    QByteArray lines;
    qsizetype length = 0;
    for (const char c : content) {
        const bool isPlain = c == '\n' || (c >= ' ' && c < 127 && c != '=');
        lines += isPlain ? QByteArray(1, c)
                         : '=' + QByteArray::number(static_cast<uchar>(c), 16).toUpper();
        length = c == '\n' ? 0 : length + 1;
        if (length >= 70) {
            lines += "=\n";
            length = 0;
        }
    }
    return lines;
}

QByteArray html(const QByteArray &text)
{
    return "<html><head><style>p { margin: 0 }</style></head><body><div><p>"
           + QByteArray(text).replace('\n', "</p>\n<p class=\"x\"><span>")
           + "</p></div></body></html>";
}

SampleMessage makeMessage(SampleText &sample, int number)
{
    constexpr auto kUTF8 = "; charset=utf-8\nContent-Transfer-Encoding: ";
    QByteArray text = sample.text(300 + static_cast<qsizetype>(sample.number(1800)));
    if (number % 3 != 0)
        text.prepend("Marmalade ");
    SampleMessage message{.subject = sample.text(40).replace('\n', ' '),
                          .text = text,
                          .from = "Person " + QByteArray::number(number % 500) + " <p"
                                  + QByteArray::number(number % 500) + "@x.example>",
                          .date = 1'000'000'000 + qint64{900} * number,
                          .headers = "Message-ID: <" + QByteArray::number(number)
                                     + "@x.example>\n"
                                       "Received: from a.example by b.example; Thu, 1 Jan 2026\n"
                                       "To: me@y.example\nMIME-Version: 1.0\n"};
    if (number % 10 < 4) {
        message.headers += QByteArray("Content-Type: text/plain") + kUTF8 + "8bit\n";
    } else if (number % 10 < 7) {
        message.headers += "Content-Type: multipart/alternative; boundary=bound\n";
        message.text = QByteArray("--bound\nContent-Type: text/plain") + kUTF8
                       + "quoted-printable\n\n" + quotedPrintable(text)
                       + "\n--bound\nContent-Type: text/html" + kUTF8 + "quoted-printable\n\n"
                       + quotedPrintable(html(text)) + "\n--bound--\n";
    } else if (number % 10 < 9) {
        message.headers += QByteArray("Content-Type: text/html") + kUTF8 + "base64\n";
        message.text = base64Lines(html(text));
    } else {
        message.headers += "Content-Type: multipart/mixed; boundary=bound\n";
        message.text = QByteArray("--bound\nContent-Type: text/plain") + kUTF8 + "8bit\n\n" + text
                       + "\n--bound\nContent-Type: application/pdf\n"
                         "Content-Transfer-Encoding: base64\n\n"
                       + base64Lines(QByteArray(30'000, '\x5a')) + "--bound--\n";
    }
    return message;
}

/// Processor time of this process and of the parsers that have ended.
double processorSeconds()
{
    double seconds = 0;
    for (const int whose : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage = {};
        ::getrusage(whose, &usage);
        seconds += static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec)
                   + static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) * 1e-6;
    }
    return seconds;
}

/// An update until a search would be answered; at ordinary priority, for what else runs is not to
/// be measured.
void update(const char *what, const SampleHome &home, int messages)
{
    const double before = processorSeconds();
    const Stopwatch watch;
    double seconds = 0;
    {
        QList<MailFolder> folders;
        for (const MailStore &store : mailStores(home.platform.folders))
            folders += mailFolders(store);
        MailParser parser(QStringLiteral(DUGWISE_EXTRACT));
        MailIndexWriter index(home.platform.folders.cache);
        MailUpdate(index, parser, {}).run(folders, [&] { seconds = watch.seconds(); });
    }
    const double processor = processorSeconds() - before;
    std::printf("%s: %.1f ms, %.1f ms of processors", what, seconds * 1e3, processor * 1e3);
    if (messages > 0)
        std::printf("; %.0f messages/s, %.0f a second of processors",
                    messages / seconds,
                    messages / processor);
    std::printf("\n");
    std::fflush(stdout);
}

void search(const SampleHome &home, int rounds)
{
    struct Request
    {
        const char *name;
        MailPredicate predicate;
    };
    const QList<Request> requests{
        {"a word of two in three", {.textOrSubject = u"marmalade"_s}},
        {"a phrase", {.textOrSubject = u"you may convey a covered work"_s}},
        {"nothing", {.textOrSubject = u"emails about the quarterly budget review"_s}},
        {"common words that hardly ever meet so", {.textOrSubject = u"the and of"_s}},
        {"any, of a sender", {.authorEmailAddress = u"p77@x.example"_s}},
        {"a common word, of a sender",
         {.textOrSubject = u"marmalade"_s, .authorEmailAddress = u"p77@x.example"_s}},
        {"a common word, of some days long ago",
         {.textOrSubject = u"marmalade"_s,
          .contentCreationDate =
              DateIntentParser::DateRange{Instant::fromUnix(1e9), Instant::fromUnix(1e9 + 3e5)}}},
        {"all", {}},
    };
    for (const Request &request : requests) {
        std::vector<double> times;
        const double before = processorSeconds();
        qsizetype found = 0;
        for (int round = 0; round < rounds; ++round) {
            const Stopwatch watch;
            MailIndex index(home.platform.folders.cache);
            found = index.search(request.predicate, 20, QDeadlineTimer::Forever).size();
            times.push_back(watch.seconds());
        }
        std::ranges::sort(times);
        std::printf("search, %s: median %.2f ms, slowest %.2f ms, %.2f ms of processors; "
                    "%lld found\n",
                    request.name,
                    times[times.size() / 2] * 1e3,
                    times.back() * 1e3,
                    (processorSeconds() - before) / rounds * 1e3,
                    static_cast<long long>(found));
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const int count = QCoreApplication::arguments().value(1, u"100000"_s).toInt();
    const int rounds = QCoreApplication::arguments().value(2, u"21"_s).toInt();
    {
        const SampleHome home;
        const QString inbox = home.path(u".thunderbird/a/Mail/Local Folders/Inbox"_s);
        QDir().mkpath(QFileInfo(inbox).path());
        QFile mbox(inbox);
        if (!mbox.open(QFile::WriteOnly))
            return 1;
        SampleText sample(5);
        for (int number = 0; number < count; ++number)
            mbox.write(inMbox(makeMessage(sample, number)));
        mbox.close();
        std::printf("mbox of %d messages: %.1f MB\n",
                    count,
                    static_cast<double>(QFileInfo(inbox).size()) / kMegabyte);
        age(inbox);
        update("first index of the mbox", home, count);
        std::printf(
            "index: %.1f MB\n",
            static_cast<double>(QFileInfo(MailIndex::path(home.platform.folders.cache)).size())
                / kMegabyte);
        update("nothing new", home, 0);
        search(home, rounds);
        appendFile(inbox, inMbox(makeMessage(sample, count)));
        age(inbox, 30);
        update("one more message", home, 0);
    }
    const SampleHome home;
    SampleText sample(5);
    const QString maildir = home.path(u"Maildir"_s);
    QDir().mkpath(maildir + u"/new"_s);
    for (int number = 0; number < count; ++number)
        writeFile(maildir + u"/cur/%1.host:2,S"_s.arg(number),
                  bytesOf(makeMessage(sample, number)));
    age(maildir + u"/cur"_s);
    age(maildir + u"/new"_s);
    update("first index of the Maildir", home, count);
    update("nothing new", home, 0);
    return 0;
}
