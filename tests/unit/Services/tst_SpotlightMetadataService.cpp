// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/FileAttributes.h"
#include "Services/SpotlightMetadataService.h"
#include "support/Fakes.h"
#include "support/SampleFiles.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

/// The paths from /x/`first` up to /x/`last`, one a line.
QByteArray lines(int first, int last)
{
    QByteArray output;
    for (int i = first; i <= last; ++i)
        output += "/x/" + QByteArray::number(i) + '\n';
    return output;
}

} // namespace

class TstSpotlightMetadataService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_command.outputs.clear();
        m_command.runs.clear();
    }

    void takesTheFirstOfEachList()
    {
        const auto index = std::make_shared<FakeMetadataIndex>();
        index->items.insert(u"/a"_s,
                            {.lastUsedDate = Instant{1},
                             .downloadedDate = {Instant{3}, Instant{2}},
                             .whereFroms = {u"https://a.example/f"_s, u"https://b.example"_s},
                             .contentType = u"public.text"_s});
        index->items.insert(u"/b"_s, {});
        const SpotlightMetadataService service(index, nullptr);
        const SpotlightFileMetadata expected{
            Instant{1}, Instant{3}, u"https://a.example/f"_s, u"public.text"_s};
        QCOMPARE(service.getMetadata(u"/a"_s), expected);
        QCOMPARE(service.getMetadata(u"/b"_s), SpotlightFileMetadata());
        QCOMPARE(service.getMetadata(u"/unknown"_s), SpotlightFileMetadata());
        QCOMPARE(SpotlightMetadataService(nullptr, nullptr).getMetadata(u"/a"_s),
                 SpotlightFileMetadata());
    }

    void describesHits()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"Grün 1.TXT"_s);
        writeFile(path, "four");
        const QList<SpotlightSearchHit> hits = search({path.toUtf8() + "\n\n/gone/x\n", ""});
        QCOMPARE(hits.size(), 2);
        const auto modified = fileAttributes(path)->modifiedDate;
        const SpotlightSearchHit present{
            u"Grün 1.TXT"_s, path, modified, 4, u"TXT"_s, folder.path()};
        QCOMPARE(hits[0], present);
        QCOMPARE(hits[1], (SpotlightSearchHit{u"x"_s, u"/gone/x"_s, {}, 0, {}, u"/gone"_s}));
        QCOMPARE(m_command.runs,
                 (QList<QStringList>{{u"-name"_s, u"the query"_s}, {u"the query"_s}}));
    }

    void limitsAndMerges_data()
    {
        QTest::addColumn<QList<std::optional<QByteArray>>>("outputs");
        QTest::addColumn<QByteArray>("expected");
        using Outputs = QList<std::optional<QByteArray>>;
        const auto row = [](const char *name, const Outputs &outputs, const QByteArray &expected) {
            QTest::newRow(name) << outputs << expected;
        };
        row("nothing", {"", ""}, "");
        row("no line feed at the end", {"/x/1", "/x/2"}, lines(1, 2));
        row("80 of a run", {lines(1, 90), ""}, lines(1, 80));
        row("empty lines", {lines(1, 79) + "\n\n" + lines(80, 81), ""}, lines(1, 80));
        row("80 of the other run", {"", lines(1, 90)}, lines(1, 80));
        row("100 in all", {lines(1, 90), lines(101, 190)}, lines(1, 80) + lines(101, 120));
        row("once", {"/x/2\n/x/1\n/x/2\n", "/x/3\n/x/1\n/x/3\n"}, "/x/2\n/x/1\n/x/3\n");
        row("repeats before the limit of 100", {lines(1, 80), lines(41, 140)}, lines(1, 100));
        row("repeats after that of 80", {lines(1, 40) + lines(1, 60), ""}, lines(1, 40));
        row("undecodable names", {"/x/1\n/x/\xe9\n", "/x/2\n"}, lines(2, 2));
        row("undecodable content", {"/x/1\n", "\xff"}, lines(1, 1));
        row("not started", {std::nullopt, "/x/2"}, lines(2, 2));
        row("never started", {}, "");
    }
    void limitsAndMerges()
    {
        QFETCH(QList<std::optional<QByteArray>>, outputs);
        QByteArray found;
        for (const SpotlightSearchHit &hit : search(outputs))
            found += hit.path.toUtf8() + '\n';
        QTEST(found, "expected");
    }

    void findsNothingWithoutACommand()
    {
        SpotlightMetadataService service(nullptr, nullptr);
        QVERIFY(QCoro::waitFor(service.searchSpotlight(u"x"_s)).isEmpty());
    }

private:
    QList<SpotlightSearchHit> search(const QList<std::optional<QByteArray>> &outputs)
    {
        m_command.outputs = outputs;
        SpotlightMetadataService service(nullptr, &m_command);
        return QCoro::waitFor(service.searchSpotlight(u"the query"_s, {u"/ignored"_s}));
    }

    FakeMetadataQueryCommand m_command;
};

QTEST_GUILESS_MAIN(TstSpotlightMetadataService)
#include "tst_SpotlightMetadataService.moc"
