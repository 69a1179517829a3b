// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Has the indexer read a Maildir and an mbox of broken and hostile messages with sound ones between
// them: all sound ones must be found, and nothing be touched.
// usage: fuzz_mail [COUNT [SEED]]

#include "Platform/Linux/MailIndex.h"
#include "Platform/Linux/MailIndexer.h"
#include "TextMutator.h"
#include "support/Fingerprint.h"
#include "support/SampleHome.h"
#include "support/SampleMail.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

constexpr int kMessagesPerSoundOne = 20;

const QByteArray kMessage =
    "Message-ID: <broken@x.example>\nX-Mozilla-Status: 0001\n"
    "From: =?UTF-8?Q?J=C3=B6rg?= \"Chen, J\" <joerg@x.example>, friends: c@y.example;\n"
    "Date: Thu, 1 Jan 2026 12:00:00 +0100 (CET)\n"
    "Subject: =?iso-2022-jp?B?GyRCOzNFRBsoQg==?=\n =?utf-8?q?and_more?=\n"
    "MIME-Version: 1.0\nContent-Type: multipart/mixed;\n boundary*0=\"ou\"; boundary*1=ter\n\n"
    "--outer\nContent-Type: multipart/alternative; boundary=inner\n\n--inner\n"
    "Content-Type: text/plain; charset=\"iso-8859-15\"; format=flowed\n"
    "Content-Transfer-Encoding: quoted-printable\n\nNumbers =A4 5=\n and more\n--inner\n"
    "Content-Type: text/html; charset=utf-8\nContent-Transfer-Encoding: base64\n\n"
    "PGh0bWw+PHN0eWxlPnB7fTwvc3R5bGU+PHA+TnVtYmVycyAmZXVybzsgJiN4NDE7PC9wPjwhLS0gLS0+\n"
    "--inner--\n--outer\nContent-Type: message/rfc822\n\nSubject: within\n\nWithin\n"
    "--outer\nContent-Type: application/pdf; name*=utf-8''a%20b.pdf\n"
    "Content-Transfer-Encoding: x-uuencode\n\nbegin 644 a\n#86)C\n`\nend\n--outer--\n";
const QByteArrayList kParts{"\n\n",
                            "\r\n",
                            "\n ",
                            "\n\nFrom - Thu Jan  1 12:00:00 2026\n",
                            "\nFrom x Thu Jan  1 12:00:00 2026\n",
                            "--outer\n",
                            "--outer--\n",
                            "--inner\n",
                            "Content-Type: multipart/mixed; boundary=outer\n\n",
                            "Content-Type: message/rfc822\n\n",
                            "Content-Type: message/partial; number=1; total=2\n\n",
                            "Content-Transfer-Encoding: base64\n\n",
                            "Content-Length: 18446744073709551615\n",
                            "X-Mozilla-Status: 0009\n",
                            "charset=utf-7",
                            "charset=iso-2022-kr",
                            "charset=hz",
                            "charset=",
                            "=?utf-8?b?",
                            "=?hz?q?~{?=",
                            "?=",
                            "\x1b$B",
                            "<!--",
                            "<script>",
                            "<table><tr><td>",
                            "&#1114112;",
                            "&",
                            "=",
                            "\"",
                            "(",
                            "<",
                            "@",
                            ":",
                            ";",
                            ",",
                            "99999999999",
                            "-1",
                            "\xff",
                            QByteArray(1, '\0')};

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const int count = QCoreApplication::arguments().value(1, u"1000"_s).toInt();
    const quint64 seed = QCoreApplication::arguments().value(2, u"1"_s).toULongLong();

    const SampleHome home;
    fuzz::TextMutator mutator(kParts, seed);
    QByteArray mbox;
    int sound = 0;
    for (int i = 0; i < count; ++i) {
        writeFile(home.path(u"Maildir/cur/%1:2,S"_s.arg(i)), mutator.spoilt(kMessage));
        mbox += "From - Thu Jan  1 12:00:00 2026\n" + mutator.spoilt(kMessage) + "\n\n";
        if (i % kMessagesPerSoundOne != 0)
            continue;
        const SampleMessage message{.subject = "Sound", .text = "Quincy " + QByteArray::number(i)};
        writeFile(home.path(u"Maildir/new/%1 sound"_s.arg(i)), bytesOf(message));
        mbox += inMbox(message);
        sound += 2;
    }
    writeFile(home.path(u"Mail/lists"_s), mbox);
    const QByteArray before = fingerprint(home.folder.path());

    QElapsedTimer timer;
    timer.start();
    const QString cache = home.platform.folders.cache;
    {
        MailIndexer indexer(home.platform.folders, QStringLiteral(DUGWISE_EXTRACT));
        indexer.update(true).wait();
    }
    MailIndex index(cache);
    const QList<MailItem> found =
        index.search({.textOrSubject = u"quincy"_s, .authorEmailAddress = u"sarah@"_s},
                     2 * count,
                     QDeadlineTimer::Forever);
    const auto isWhole = [](const MailItem &item) {
        return item.subject == u"Sound"_s
               && item.textContent.value_or(QString()).startsWith(u"Quincy "_s);
    };
    const auto whole = std::ranges::count_if(found, isWhole);
    std::printf("seed %llu, %.1f s, %lld messages, %lld of %d sound ones found\n",
                seed,
                static_cast<double>(timer.elapsed()) / 1000,
                index.summary().messages,
                static_cast<long long>(whole),
                sound);
    if (!QDir(home.path(u".cache"_s)).removeRecursively()
        || fingerprint(home.folder.path()) != before) {
        std::printf("FAILED: files were touched\n");
        return 1;
    }
    return whole == sound ? 0 : 1;
}
