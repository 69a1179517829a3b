// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/FileSearchService.h"
#include "support/SampleFiles.h"

#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;
using DateIntentParser::DateRange;
using Intent = ParsedSearchIntent;

namespace {

/// Wednesday, 2024-05-15, noon UTC.
const Instant kNow = Instant::fromUnix(1'715'774'400.0);
/// Long enough ago to earn nothing.
const Instant kOld = kNow - 60 * kDay;
const DateRange kRange{kOld, kNow - 50 * kDay};

/// Scores that a test sets by path, and what was asked for.
struct Semantics
{
    QHash<QString, double> scores;
    QList<std::tuple<QString, double, qsizetype>> requests;
};

class FakeSemanticSearch final : public SemanticSearchService
{
public:
    explicit FakeSemanticSearch(Semantics &semantics)
        : SemanticSearchService([] { return nullptr; })
        , m_semantics(semantics)
    {}
    [[nodiscard]] QList<SemanticMatch> search(const QString &query,
                                              const QList<IndexedFile> &files,
                                              double threshold,
                                              qsizetype maxResults) const override
    {
        m_semantics.requests.append({query, threshold, maxResults});
        QList<SemanticMatch> matches;
        for (const IndexedFile &file : files)
            matches.append({file, m_semantics.scores.value(file->path)});
        return matches;
    }

private:
    Semantics &m_semantics;
};

Intent words(const QString &keywords)
{
    return {.keywords = keywords.split(u' ')};
}
Intent phrase(const QString &text)
{
    return {.phrases = {text}};
}
Intent during(const DateRange &range)
{
    return {.dateRange = range};
}
Intent kind(std::optional<FileType> type, bool includeScreenshots = false)
{
    return {.fileType = type, .includeScreenshots = includeScreenshots};
}

FileFacts at(const QString &path)
{
    return {.path = path, .modified = kOld};
}
FileFacts saying(const QByteArray &text, const QString &path = u"/f/x.txt"_s)
{
    return {.path = path, .modified = kOld, .text = text};
}
FileFacts from(const QString &source, Instant modified = kOld)
{
    return {.path = u"/f/x"_s, .modified = modified, .downloaded = kOld, .source = source};
}
using Date = std::optional<Instant>;
FileFacts on(Instant modified, Date used = {}, Date downloaded = {})
{
    return {.path = u"/x"_s, .modified = modified, .lastUsed = used, .downloaded = downloaded};
}

/// One letter for each reason: f for filename, c for content, d for the folder (directory), r for
/// recency, t for the type, s for semantic, w for downloads (web), u for the last use.
QString letters(const QList<SearchResult::MatchReason> &reasons)
{
    QString text;
    for (const auto reason : reasons)
        text += u"fcdrtswu"_s[static_cast<int>(reason)];
    return text;
}

QStringList paths(const QList<SearchResult> &results)
{
    QStringList list;
    for (const SearchResult &result : results)
        list.append(result.file->path);
    return list;
}

} // namespace

class TstFileSearchService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_semantics = {}; }

    void scores_data()
    {
        QTest::addColumn<Intent>("intent");
        QTest::addColumn<FileFacts>("facts");
        QTest::addColumn<double>("points");
        QTest::addColumn<QString>("reasons");
        QTest::addColumn<double>("semantic");
        const auto row = [](const char *name,
                            const Intent &intent,
                            const FileFacts &facts,
                            double points,
                            const QString &reasons = u""_s,
                            double semantic = 0) {
            QTest::newRow(name) << intent << facts << points << reasons << semantic;
        };
        const Intent zebra = words(u"zebra"_s);
        row("two variants", words(u"reports"_s), at(u"/f/Q3-Reports.pdf"_s), 26, u"f"_s);
        row("keyword in a token", words(u"budget"_s), at(u"/f/budgets"_s), 20 + 28.8 / 7, u"f"_s);
        row("token in a keyword", words(u"budgeting"_s), at(u"/f/budget"_s), 10 + 3.2, u"f"_s);
        row("like a token", words(u"invoice"_s), at(u"/f/invoce.txt"_s), 28.8 / 11, u"f"_s);
        row("too unlike", words(u"zebras"_s), at(u"/f/zabres.txt"_s), 0);
        row("best token counts once", zebra, at(u"/f/zebra_zebra-zebr.txt"_s), 16, u"f"_s);
        row("middle of a long token", zebra, at(u"/f/xxxxxzebrayyyyy"_s), 10, u"f"_s);
        row("folder", zebra, at(u"/Zebras/x.txt"_s), 6, u"d"_s);
        row("text", zebra, saying("A ZEBRA crosses"), 5, u"c"_s);
        row("variants in the text", words(u"boxes"_s), saying("Boxes"), 15, u"c"_s);
        row("a place for each",
            words(u"yak zebra"_s),
            saying("yak", u"/zebra/zebra"_s),
            24,
            u"cfd"_s);
        row("keyword twice", words(u"zebra zebra"_s), at(u"/f/zebra"_s), 32, u"f"_s);
        row("capital in the keyword", words(u"Zebra"_s), at(u"/f/Zebra"_s), 2.7, u"f"_s);
        row("capitals beyond ASCII", words(u"ärger"_s), at(u"/f/ÄRGER"_s), 16, u"f"_s);
        row("synonym", words(u"tax"_s), at(u"/f/w2.pdf"_s), 16, u"f"_s);

        row("phrase in the text", phrase(u"quick plan"_s), saying("A Quick Plan"), 12, u"c"_s);
        row("phrase in both", phrase(u"plan b"_s), saying("plan b", u"/f/Plan B"_s), 27, u"cf"_s);
        row("by words", phrase(u"meeting about big boxes"_s), saying("box meet big"), 12, u"c"_s);
        row("2 words of 3", phrase(u"one two three"_s), saying("three one"), 0);
        row("7 words of 10", phrase(u"1 2 3 4 5 6 7 x y z"_s), saying("7654321"), 12, u"c"_s);
        row("one word", phrase(u"meeting"_s), saying("to meet"), 0);
        row("phrase with capitals", phrase(u"Plan B"_s), saying("b plan"), 12, u"c"_s);

        row("modified at the start", during(kRange), on(kRange.start), 8, u"r"_s);
        row("modified at the end", during(kRange), on(kRange.end), 8, u"r"_s);
        row("modified before", during(kRange), on(kRange.start - 0.001), 0);
        row("modified after", during(kRange), on(kRange.end - -0.001), 0);
        row("three dates", during(kRange), on(kOld, kOld, kOld), 24, u"rwu"_s);
        row("downloaded", during(kRange), on(kOld - kDay, {}, kRange.end), 10, u"w"_s);
        row("used", during(kRange), on(kOld - kDay, kRange.start), 6, u"u"_s);

        using enum FileType;
        row("kind", kind(pdf), at(u"/f/x.PDF"_s), 6, u"t"_s);
        row("another kind", kind(pdf), at(u"/f/x.txt"_s), 0);
        row("markdown as document", kind(document), at(u"/f/x.md"_s), 6, u"t"_s);
        row("text as document", kind(document), at(u"/f/x.log"_s), 6, u"t"_s);
        row("document as text", kind(FileType::text), at(u"/f/x.docx"_s), 0);
        row("code as document", kind(document), at(u"/f/x.py"_s), 0);
        row("screenshot as image", kind(image), at(u"/f/screenshot_1.pdf"_s), 6, u"t"_s);
        row("image as screenshot", kind(screenshot), at(u"/f/screen1.png"_s), 6, u"t"_s);
        row("mere image", kind(screenshot), at(u"/f/x.png"_s), 0);
        row("kind and flag", kind(screenshot, true), at(u"/Desktop/x.png"_s), 14, u"t"_s);
        const QString yes = u"My ScreenShot.txt|a screen shot.doc|screen capture|Screen.jpg|"
                            "my capture.heic|CleanShot 1.png|shottr.gif|by Snagit.webp|"
                            "ScreenShots/x.svg|Screen Shots/x.bmp|Desktop/a/b/x.jpeg"_s;
        for (const QString &name : yes.split(u'|'))
            row(qPrintable(name), kind({}, true), at(u"/f/"_s + name), 8, u"t"_s);
        const QString no = u"screen.txt|my screen.png|Desktop/x.pdf|cleanshot.mov|capture"_s;
        for (const QString &name : no.split(u'|'))
            row(qPrintable(name), kind({}, true), at(u"/f/"_s + name), 0);

        row("semantic", zebra, at(u"/x"_s), 7.5, u"s"_s, 0.5);
        row("semantic at most", zebra, at(u"/x"_s), 15, u"s"_s, 1);
        row("semantic at the threshold", zebra, at(u"/x"_s), 0, u""_s, 0.35);
        row("source", zebra, from(u"https://ZEBRA.example"_s), 5, u"w"_s);
        row("variant in the source", words(u"zebras"_s), from(u"zebra"_s), 0);
        row("synonyms in the source", words(u"invoice"_s), from(u"billing/invoice"_s), 15, u"w"_s);

        row("modified now", zebra, on(kNow), 2);
        row("modified in the future", zebra, on(kNow - -400 * kDay), 2);
        row("modified in 7 days", zebra, on(kNow - 6.999 * kDay), 2);
        row("modified 7 days ago", zebra, on(kNow - 7 * kDay), 1);
        row("modified in 30 days", zebra, on(kNow - 29.999 * kDay), 1);
        row("modified 30 days ago", zebra, on(kNow - 30 * kDay), 0);
        row("used in the future", zebra, on(kOld, kNow - -5 * kDay), 3);
        row("used in 3 days", zebra, on(kOld, kNow - 2.999 * kDay), 3);
        row("used 3 days ago", zebra, on(kOld, kNow - 3 * kDay), 1.5);
        row("used 7 days ago", zebra, on(kOld, kNow - 7 * kDay), 0);
        row("modified and used", zebra, on(kNow, kNow), 5);
    }
    void scores()
    {
        QFETCH(Intent, intent);
        QFETCH(FileFacts, facts);
        QFETCH(double, points);
        QFETCH(double, semantic);
        if (semantic > 0)
            m_semantics.scores.insert(facts.path, semantic);
        // The first file sees to it that nothing is carried over from one to the next.
        FileFacts other = saying("zebra plan", u"/Zebra Desktop/zebra plan b.png"_s);
        other.source = u"zebra"_s;
        const auto results = search({}, intent, {indexedFile(other), indexedFile(facts)});
        const auto index = paths(results).indexOf(facts.path);
        QCOMPARE(index >= 0, points > 0);
        if (index < 0)
            return;
        const SearchResult &result = results[index];
        QVERIFY2(std::abs(result.relevanceScore - points) < 1e-9,
                 qPrintable(QString::number(result.relevanceScore, 'g', 17)));
        QTEST(letters(result.matchReasons), "reasons");
        QVERIFY(!result.id.isNull());
    }

    void ranksTheBestFifteen()
    {
        QList<IndexedFile> files;
        QStringList expected;
        for (int i = 0; i < 40; ++i) {
            expected.append(QString::number(i));
            files.append(indexedFile({.path = expected.last(), .modified = kNow}));
        }
        QCOMPARE(paths(search({}, words(u"zebra"_s), files)), expected.first(15));
        // One of the last is better, and one of the first earns less than the rest.
        files[37] = indexedFile({.path = u"zebra"_s, .modified = kNow});
        files[3] = indexedFile({.path = u"less"_s, .modified = kNow - 8 * kDay});
        expected.removeAt(3);
        expected.prepend(u"zebra"_s);
        QCOMPARE(paths(search({}, words(u"zebra"_s), files)), expected.first(15));
        QVERIFY(search({}, words(u"zebra"_s), {}).isEmpty());
    }

    void looksForNothingInVain()
    {
        const QList<IndexedFile> files{indexedFile({.path = u"/f/thing.txt"_s, .modified = kNow})};
        QVERIFY(search(u"show me the thing"_s, {}, files).isEmpty());
        QVERIFY(search(u"thing thing.txt"_s, Intent{}, files).isEmpty());
        QVERIFY(search(QString(), {}, files).isEmpty());
        QVERIFY(m_semantics.requests.isEmpty());
        // One thing of five is enough.
        const QList<Intent> intents{words(u"x"_s), phrase(u"x"_s), during(kRange), kind({}, true)};
        for (const Intent &intent : intents + QList<Intent>{kind(FileType::pdf)})
            QCOMPARE(search(u"x"_s, intent, files).size(), 1);
        QCOMPARE(search(u"since Yesterday"_s, Intent{}, files).size(), 1);
        QCOMPARE(m_semantics.requests.size(), 6);
        const std::tuple<QString, double, qsizetype> last{u"since Yesterday"_s, 0.35, 30};
        QCOMPARE(m_semantics.requests.last(), last);
    }

    void readsRequestsItself()
    {
        const QList<IndexedFile> files{indexedFile(at(u"/Desktop/a.png"_s)),
                                       indexedFile(on(kNow - 24 * kHour)),
                                       indexedFile(at(u"/f/c.png"_s))};
        const auto results = search(u"screenshot from yesterday"_s, {}, files);
        QCOMPARE(paths(results), (QStringList{u"/Desktop/a.png"_s, u"/x"_s}));
        QCOMPARE(results[0].relevanceScore, 14.0);
        QCOMPARE(letters(results[0].matchReasons), u"t"_s);
        QCOMPARE(results[1].relevanceScore, 10.0);
        QCOMPARE(letters(results[1].matchReasons), u"r"_s);
    }

    void summarises_data()
    {
        QTest::addColumn<Intent>("intent");
        QTest::addColumn<FileFacts>("facts");
        QTest::addColumn<double>("semantic");
        QTest::addColumn<QString>("summary");
        const auto row = [](const char *name,
                            const Intent &intent,
                            const FileFacts &facts,
                            const QString &summary,
                            double semantic = 0) {
            QTest::newRow(name) << intent << facts << semantic << summary;
        };
        const Intent zebra = words(u"zebra"_s);
        row("no reasons", zebra, on(kNow - 3.5 * kDay), u"Modified 3 days ago."_s);
        row("future", zebra, on(kNow - -2 * kHour), u"Modified in 2 hours."_s);
        row("matches",
            zebra,
            saying("zebra", u"/zebra/zebra"_s),
            u"Modified 1 month ago. Matched by filename match, folder match, content match."_s);
        FileFacts all = from(u"https://example.com/x"_s, kNow - 60);
        all.lastUsed = kNow - 14 * kDay;
        row("all sentences",
            during({kOld, kNow}),
            all,
            u"Modified 1 minute ago. Semantically relevant to your query. Downloaded from "
            "example.com. Last opened 2 weeks ago. Matched by recently modified."_s,
            0.9);
        const auto from2 = [](const QString &source) { return from(source, kNow - 2 * kDay); };
        const QString begin = u"Modified 2 days ago. Downloaded from "_s;
        const QString address = u"https://me:pw@files.example.org:8080/a b?c#d"_s;
        row("host", during(kRange), from2(address), begin + u"files.example.org."_s);
        for (const QString &source : {u"AirDrop from Bob"_s, u"example.com/x"_s, u"mailto:a@b.c"_s})
            row(qPrintable(source), during(kRange), from2(source), begin + source + u'.');
        const FileFacts noSource = on(kNow - 2 * kDay, {}, kOld);
        row("no source", during(kRange), noSource, u"Modified 2 days ago."_s);
    }
    void summarises()
    {
        QFETCH(Intent, intent);
        QFETCH(FileFacts, facts);
        QFETCH(double, semantic);
        if (semantic > 0)
            m_semantics.scores.insert(facts.path, semantic);
        const auto results = search({}, intent, {indexedFile(facts)});
        QCOMPARE(results.size(), 1);
        QTEST(results.first().summary, "summary");
    }

    void answersAnyRequest()
    {
        const QList<IndexedFile> files{indexedFile(saying("zebra", u"/f/Zebra.txt"_s)),
                                       indexedFile(at(u"/f/תקציב.pdf"_s)),
                                       indexedFile(at(u"/f/🦓.pdf"_s))};
        QString manyWords = u"zebra"_s;
        for (int i = 0; manyWords.size() < 100'000; ++i)
            manyWords += u" w%1x"_s.arg(i);
        QCOMPARE(paths(search(manyWords, {}, files)), QStringList{u"/f/Zebra.txt"_s});
        QCOMPARE(paths(search(u"\u202eאת תקציב של"_s, {}, files)), QStringList{u"/f/תקציב.pdf"_s});
        for (const QString &request : {QString(100'000, u'z'),
                                       u"with "_s + u"a\u0301 "_s.repeated(33'333),
                                       u"🦓👨‍👩‍👧🇩🇪"_s.repeated(1000),
                                       QString(u'\0') + QChar(0xd800)})
            QVERIFY(search(request, {}, files).isEmpty());
    }

private:
    QList<SearchResult> search(const QString &query,
                               const std::optional<Intent> &intent,
                               const QList<IndexedFile> &files)
    {
        const FileSearchService service(std::make_unique<FakeSemanticSearch>(m_semantics),
                                        SpotlightMetadataService(nullptr, nullptr),
                                        Clock(kNow));
        return service.search(query, intent, files);
    }

    Semantics m_semantics;
};

QTEST_GUILESS_MAIN(TstFileSearchService)
#include "tst_FileSearchService.moc"
