// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Searches message histories of many messages: one of iMessage, one of Chatty, and the latter while
// its write-ahead log is full. Their texts have 5 to 24 words; two in three have a common one.
// usage: bench_messages [MESSAGES [ROUNDS]]

#include "Measure.h"
#include "Platform/Linux/DesktopMessageStore.h"
#include "Services/MessagesService.h"
#include "support/SampleHome.h"
#include "support/SampleStores.h"

#include <QCoreApplication>
#include <QRandomGenerator>

#include <algorithm>
#include <vector>

using namespace dugwise;
using namespace dugwise::bench;
using namespace dugwise::test;

namespace {

QStringList makeWords(QRandomGenerator &random)
{
    QStringList words;
    for (int i = 0; i < 4000; ++i) {
        QString word;
        for (int length = random.bounded(2, 10); length > 0; --length)
            word += QChar(random.bounded('a', 'z' + 1));
        words.append(word);
    }
    return words;
}

/// `perSecond`: units of the store's dates.
template <typename Store>
void fill(Store &store, int count, qint64 perSecond)
{
    QRandomGenerator random(11);
    const QStringList words = makeWords(random);
    store.run("BEGIN");
    for (int i = 0; i < count; ++i) {
        QStringList text;
        if (i % 3 != 0)
            text.append(QStringLiteral("Marmalade"));
        for (int rest = random.bounded(5, 25); rest > 0; --rest)
            text.append(words[random.bounded(static_cast<int>(words.size()))]);
        store.add({.text = text.join(u' '),
                   .date = QByteArray::number((1'000'000'000 + qint64{900} * i) * perSecond),
                   .other = 1 + i % 2,
                   .direction = i % 4 < 2 ? 1 : -1,
                   .chats = {1 + i % 2}});
    }
    store.run("COMMIT");
}

void measure(const char *what, const SampleHome &home, int rounds)
{
    const DesktopMessageStore store(home.platform.folders);
    const MessagesService service(&store);
    struct Request
    {
        const char *name;
        QString query;
        std::optional<QString> contact{};
    };
    const QList<Request> requests{
        {"common word", QStringLiteral("marmalade")},
        {"and a contact", QStringLiteral("marmalade"), QStringLiteral("555")},
        {"and no contact", QStringLiteral("marmalade"), QStringLiteral("robin")},
        {"all", QString()},
        {"none", QStringLiteral("quincunx")}};
    for (const Request &request : requests) {
        std::vector<double> times;
        qsizetype found = 0;
        for (int round = 0; round < rounds; ++round) {
            const Stopwatch watch;
            found = service.searchMessages(request.query, request.contact, 10).size();
            times.push_back(watch.seconds());
        }
        std::ranges::sort(times);
        std::printf("%s, %s: median %.1f ms, best %.1f ms; %lld found\n",
                    what,
                    request.name,
                    times[times.size() / 2] * 1e3,
                    times.front() * 1e3,
                    static_cast<long long>(found));
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const int count = QCoreApplication::arguments().value(1, QStringLiteral("200000")).toInt();
    const int rounds = QCoreApplication::arguments().value(2, QStringLiteral("21")).toInt();
    {
        const SampleHome home;
        SampleChatDatabase store(home.folder.path());
        fill(store, count, 1'000'000'000);
        measure("chat.db", home, rounds);
    }
    const SampleHome home;
    SampleChatty store(home.folder.path());
    fill(store, count, 1);
    measure("Chatty", home, rounds);
    store.run("PRAGMA journal_mode = WAL; PRAGMA wal_autocheckpoint = 0;");
    store.add({.text = QStringLiteral("new"), .date = "1900000000"});
    measure("Chatty, being written", home, rounds);
    return 0;
}
