// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/RecentlyUsed.h"
#include "Platform/Linux/StoreFacts.h"
#include "Utilities/FileUri.h"
#include "support/LocalZone.h"
#include "support/SampleStores.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

const Instant kNow = at(u"2026-05-10T12:00:00Z"_s);

} // namespace

class TstStoreFacts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleansAddresses_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<std::optional<QString>>("address");
        const auto same = [](const QString &text) {
            QTest::addRow("%s", qPrintable(text.left(40))) << text << std::optional(text);
        };
        const auto row = [](const QString &text, const std::optional<QString> &address) {
            QTest::addRow("%s", qPrintable(text.left(40))) << text << address;
        };
        same(u"https://a.example/x%20y?q=ü#part"_s);
        same(u"HTTP://A.example:8080"_s);
        same(u"ftp://a.example/b@c"_s);
        same(u"https://[2001:db8::1]/x"_s);
        same(u"https://a.example/"_s + QString(16'000, u'x'));
        row(u"https://me:pw@a.example/x?q=me@b"_s, u"https://a.example/x?q=me@b"_s);
        row(u"https://me@a.example/"_s, u"https://a.example/"_s);
        row(u"https://me:p%40w:x@a.example/"_s, u"https://a.example/"_s);
        row(u"https://:@a.example/"_s, u"https://a.example/"_s);
        row(u"blob:https://me:pw@a.example:81/0d3c-77"_s, u"https://a.example:81"_s);
        for (const QString &text : {u""_s,
                                    u"a.example"_s,
                                    u"/home/me/x"_s,
                                    u"https:///x"_s,
                                    u"https://me:p@w@/x"_s,
                                    u"http://a b.example/"_s,
                                    u"data:text/plain;base64,AAAA"_s,
                                    u"blob:null/0d3c"_s,
                                    u"file:///home/me/x"_s,
                                    u"about:blank"_s,
                                    u"chrome://downloads/"_s,
                                    u"javascript://a.example/"_s})
            row(text, std::nullopt);
        row(u"https://a.example/"_s + QString(20'000, u'x') + u'!', std::nullopt);
    }
    void cleansAddresses()
    {
        QFETCH(QString, text);
        QTEST(webAddress(text), "address");
    }

    void readsFileUris_data()
    {
        QTest::addColumn<QString>("uri");
        QTest::addColumn<std::optional<QString>>("path");
        const auto row = [](const QString &uri, const std::optional<QString> &path) {
            QTest::addRow("%s", qPrintable(uri)) << uri << path;
        };
        row(u"file:///a%20b/%C3%BC%23%3f"_s, u"/a b/ü#?"_s);
        row(u"file:///a/ü"_s, u"/a/ü"_s);
        row(u"file://localhost/a"_s, u"/a"_s);
        row(u"file:/a"_s, u"/a"_s);
        row(u"file:///100%"_s, u"/100%"_s);
        for (const QString &uri : {u""_s,
                                   u"/a"_s,
                                   u"file:a"_s,
                                   u"file://server/a"_s,
                                   u"file:///%ff"_s,
                                   u"file:///a%00b"_s,
                                   u"https://a.example/a"_s,
                                   u"trash:///a"_s})
            row(uri, std::nullopt);
    }
    void readsFileUris()
    {
        QFETCH(QString, uri);
        QTEST(pathOfFileUri(uri), "path");
    }

    void readsRecentlyUsed_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("date"); // of /f
        const auto row = [](const char *name, const QByteArray &content, const QString &date) {
            QTest::newRow(name) << content << date;
        };
        const auto one = [](const QByteArray &attributes, const QByteArray &application = {}) {
            return xbel(bookmark(u"/f"_s, attributes, application));
        };
        const QString first = u"2026-01-01T00:00:00Z"_s;
        const QString second = u"2026-01-02T03:04:05Z"_s;
        const QByteArray visited = "visited=\"2026-01-01T00:00:00Z\" ";
        const QByteArray modified = "modified=\"2026-01-02T03:04:05Z\" ";
        row("visited", one(visited), first);
        row("modified is newer", one(visited + modified), second);
        row("an application is newer", one(visited, modified), second);
        row("added alone", one("added=\"2026-01-01T00:00:00Z\""), {});
        row("no date", one(""), {});
        row("a bad date", one("visited=\"soon\" " + modified), second);
        row("bad dates", one("visited=\"\" modified=\"2026-13-01T00:00:00Z\""), {});
        row("never", one("visited=\"1969-12-31T23:59:59Z\" modified=\"1970-01-01T00:00:00Z\""), {});
        row("in the future", one(visited, "modified=\"2026-05-12T00:00:00Z\""), first);
        row("microseconds",
            one("visited=\"2026-01-02T03:04:05.250123Z\""),
            u"2026-01-02T03:04:05.250Z"_s);
        row("zone", one("visited=\"2026-01-02T05:04:05+02:00\""), second);
        row("no zone", one("visited=\"2026-01-02T03:04:05\""), second);
        row("no version", one(modified).replace("<xbel version=\"1.0\"", "<xbel"), second);
        row("no name spaces", "<xbel>" + bookmark(u"/f"_s, visited, modified) + "</xbel>", second);
        row("document type", one(modified).replace("?>\n", "?>\n<!DOCTYPE xbel>\n"), second);
        row("private", one(modified).replace("<mime:", "<bookmark:private/><mime:"), {});
        row("twice", xbel(bookmark(u"/f"_s, modified) + bookmark(u"/f"_s, visited)), second);
        row("cut",
            xbel(bookmark(u"/f"_s, visited) + bookmark(u"/g"_s, modified)).chopped(60),
            first);
        row("cut in it", one(modified).chopped(60), {});
        row("behind a bad href",
            xbel(bookmark(u"/f"_s, modified).replace("file://", "https:")
                 + bookmark(u"/f"_s, visited)),
            first);
        row("empty", "", {});
        row("no XML", "visited /f", {});
        row("broken at once", "<xbel><<" + bookmark(u"/f"_s, visited), {});
    }
    void readsRecentlyUsed()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, date);
        setZone(u"America/New_York"_s);
        const StoreFacts facts = readRecentlyUsed(content, kNow);
        setZone(u"UTC"_s);
        QCOMPARE(facts.lastUses.contains(u"/f"_s), !date.isEmpty());
        if (!date.isEmpty())
            QCOMPARE(facts.lastUses[u"/f"_s].seconds, at(date).seconds);
    }
};

QTEST_GUILESS_MAIN(TstStoreFacts)
#include "tst_StoreFacts.moc"
