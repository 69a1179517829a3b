// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/SemanticSearchService.h"
#include "support/Fakes.h"
#include "support/SampleFiles.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

/// The words "w<first>" to "w<last>", one blank between each.
QByteArray words(int first, int last)
{
    QByteArrayList all;
    for (int i = first; i <= last; ++i)
        all.append('w' + QByteArray::number(i));
    return all.join(' ');
}

} // namespace

class TstSemanticSearchService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_embedding.distances.clear(); }

    void cutsTextIntoChunks_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArrayList>("chunks");
        const auto row =
            [](const char *name, const QByteArray &text, const QByteArrayList &chunks) {
                QTest::newRow(name) << text << chunks;
            };
        row("as many words as may be", words(0, 299), {words(0, 299)});
        row("one more", words(0, 300), {words(0, 299), words(250, 300)});
        row("700", words(0, 699), {words(0, 299), words(250, 549), words(500, 699)});
        row("the last is all overlap",
            words(0, 550),
            {words(0, 299), words(250, 549), words(500, 550)});
        row("few stay as they are", "  a  b\n\tc ", {"  a  b\n\tc "});
        row("blanks alone separate", words(0, 299) + "\n\tx", {words(0, 299) + "\n\tx"});
        row("no piece is empty",
            "  " + words(0, 299) + "   " + words(300, 300) + ' ',
            {words(0, 299), words(250, 300)});
        row("blanks alone", "   ", {"   "});
    }
    void cutsTextIntoChunks()
    {
        QFETCH(QByteArray, text);
        QTEST(chunkText(text, 300, 50), "chunks");
    }

    void takesTheNearestPassage()
    {
        // Eleven chunks, of which ten count.
        const IndexedFile file =
            indexedFile({.path = u"/x/Long.TXT"_s, .text = words(0, 2600).toUpper()});
        const auto score = [&] {
            const QList<SemanticMatch> matches = search({file}, 0.35, 30);
            return matches.isEmpty() ? -1 : matches.first().score;
        };
        QCOMPARE(score(), -1);
        m_embedding.distances.insert(words(2500, 2600), 0);
        QCOMPARE(score(), -1);
        m_embedding.distances.insert(words(2250, 2549), 1);
        QCOMPARE(score(), 0.5);
        m_embedding.distances.insert("Long.TXT", 0.5);
        QCOMPARE(score(), 0.75);
        m_embedding.distances.insert(words(0, 299), 0.25);
        QCOMPARE(score(), 0.875);
    }

    void keepsTheBestFromTheThresholdOn()
    {
        m_embedding.distances = {
            {"a", 1.3}, {"b", 1.301}, {"c", 1}, {"d", 1.3}, {"e", 0.5}, {"f", 1}};
        QList<IndexedFile> files;
        for (const auto name : {"a"_L1, "b"_L1, "c"_L1, "d"_L1, "e"_L1, "f"_L1})
            files.append(indexedFile({.path = "/x/"_L1 + name}));
        QCOMPARE(names(search(files, 0.35, 30)), u"ecfad"_s);
        QCOMPARE(search(files, 0.35, 30).last().score, 1 - 0.5 * 1.3);
        QCOMPARE(names(search(files, 0.35, 2)), u"ec"_s);
        QCOMPARE(names(search(files, 0.9, 2)), u""_s);
        QCOMPARE(names(search(files, 0, 30)), u"ecfadb"_s);
        m_embedding.distances.insert("b", 2.5);
        QCOMPARE(search({files[1]}, 0, 30).first().score, 0);
    }

    void usesTheVectorsThatFilesCarry()
    {
        m_embedding.distances = {{"carried", 0.2}, {"made", 0.4}};
        const IndexedFile made = indexedFile({.path = u"/x/made"_s});
        const IndexedFile carrying(*made, "carried");
        m_embedding.made = 0;
        QCOMPARE(search({carrying, made}, 0.35, 30).first().score, 0.9);
        QCOMPARE(m_embedding.made, 1);
    }

    void cutsLongNames()
    {
        const QString name(500, u'ä');
        m_embedding.distances.insert(name.toUtf8(), 0);
        QCOMPARE(search({indexedFile({.path = u"/x/"_s + name + u'b'})}, 1, 30).size(), 1);
    }

    void findsNothingWithoutAnEmbedding()
    {
        m_embedding.distances.insert("a", 0);
        const QList<IndexedFile> files{indexedFile({.path = u"/x/a"_s})};
        const SentenceEmbedding *now = nullptr;
        const SemanticSearchService service([&] { return now; });
        QVERIFY(service.search(u"x"_s, files, 0.35, 30).isEmpty());
        now = &m_embedding; // asked for again, and then kept
        QCOMPARE(service.search(u"x"_s, files, 0.35, 30).size(), 1);
        now = nullptr;
        QCOMPARE(service.search(u"x"_s, files, 0.35, 30).size(), 1);
    }

private:
    QList<SemanticMatch> search(const QList<IndexedFile> &files, double threshold, qsizetype most)
    {
        const SemanticSearchService service([this] { return &m_embedding; });
        return service.search(u"request"_s, files, threshold, most);
    }
    static QString names(const QList<SemanticMatch> &matches)
    {
        QString all;
        for (const SemanticMatch &match : matches)
            all += match.file->name;
        return all;
    }

    FakeSentenceEmbedding m_embedding;
};

QTEST_GUILESS_MAIN(TstSemanticSearchService)
#include "tst_SemanticSearchService.moc"
