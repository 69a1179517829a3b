// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/FileSearchService.h"
#include "support/SampleFiles.h"

#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;
using Intent = ParsedSearchIntent;

namespace {

/// Wednesday, 2024-05-15, noon UTC.
const Instant kNow = Instant::fromUnix(1'715'774'400.0);
/// Long enough ago to earn nothing.
const Instant kOld = kNow - 60 * kDay;
const DateIntentParser::DateRange kRange{kOld, kNow - 50 * kDay};

/// Scores that a test sets by path, and what the search asked for.
class FakeSemanticSearch final : public SemanticSearchService
{
public:
    struct State
    {
        QHash<QString, double> scores;
        QStringList queries;
        double threshold = 0;
        qsizetype maxResults = 0;
    };
    explicit FakeSemanticSearch(State &state)
        : m_state(state)
    {}
    [[nodiscard]] QList<SemanticMatch> search(const QString &query,
                                              const QList<IndexedFile> &files,
                                              double threshold,
                                              qsizetype maxResults) const override
    {
        m_state.queries.append(query);
        m_state.threshold = threshold;
        m_state.maxResults = maxResults;
        QList<SemanticMatch> matches;
        for (const IndexedFile &file : files) {
            if (m_state.scores.contains(file->path))
                matches.append({file, m_state.scores.value(file->path)});
        }
        return matches;
    }

private:
    State &m_state;
};

/// One file and what it earns.
struct Case
{
    Intent intent{};
    FileFacts file{};
    double points = 0;
    QStringList reasons{};
    double semantic = 0;
};

Intent words(const QStringList &keywords)
{
    Intent intent;
    intent.keywords = keywords;
    return intent;
}

Intent phrase(const QString &text)
{
    Intent intent;
    intent.phrases = {text};
    return intent;
}

Intent during(const DateIntentParser::DateRange &range)
{
    Intent intent;
    intent.dateRange = range;
    return intent;
}

Intent ofKind(FileType kind, bool includeScreenshots = false)
{
    Intent intent;
    intent.fileType = kind;
    intent.includeScreenshots = includeScreenshots;
    return intent;
}

Intent screenshots()
{
    Intent intent;
    intent.includeScreenshots = true;
    return intent;
}

QStringList labels(const QList<SearchResult::MatchReason> &reasons)
{
    QStringList list;
    for (const auto reason : reasons)
        list.append(rawValue(reason));
    return list;
}

const QString kName = u"Filename match"_s;
const QString kText = u"Content match"_s;
const QString kFolder = u"Folder match"_s;
const QString kRecency = u"Recently modified"_s;
const QString kKind = u"File type match"_s;
const QString kSemantic = u"Semantic match"_s;
const QString kDownload = u"Download info"_s;
const QString kLastUsed = u"Recently used"_s;

} // namespace

class TstFileSearchService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_semantic = {}; }

    void scores_data()
    {
        QTest::addColumn<Case>("c");
        const auto row = [](const char *name, const Case &c) { QTest::newRow(name) << c; };
        const auto old = [](const QString &path) {
            return FileFacts{.path = path, .modified = kOld};
        };
        const auto saying = [](const QByteArray &text) {
            return FileFacts{.path = u"/f/x.txt"_s, .modified = kOld, .text = text};
        };
        const auto from = [](const QString &source) {
            return FileFacts{.path = u"/f/x"_s, .modified = kOld, .source = source};
        };
        const Intent zebra = words({u"zebra"_s});

        row("two variants in the name",
            {words({u"reports"_s}), old(u"/f/Q3-Reports.pdf"_s), 26, {kName}});
        row("token holds the keyword",
            {words({u"budget"_s}), old(u"/f/budgets.txt"_s), 20 + 6 * 0.8 * 6 / 7, {kName}});
        row("keyword holds the token",
            {words({u"budgeting"_s}), old(u"/f/budget.txt"_s), 10 + 6 * 0.8 * 6 / 9, {kName}});
        row("token like the keyword",
            {words({u"invoice"_s}), old(u"/f/invoce.txt"_s), 6 * 0.6 * 8 / 11, {kName}});
        row("token too unlike", {words({u"zebras"_s}), old(u"/f/zabres.txt"_s), 0});
        row("best token counts once", {zebra, old(u"/f/zebra_zebra-zebr.txt"_s), 10 + 6, {kName}});
        row("in the middle of a token", {zebra, old(u"/f/xxxxxzebrayyyyy.txt"_s), 10, {kName}});
        row("folder", {zebra, old(u"/Zebras/x.txt"_s), 6, {kFolder}});
        row("text", {zebra, saying("A ZEBRA crosses"), 5, {kText}});
        row("variants in the text", {words({u"boxes"_s}), saying("Boxes"), 15, {kText}});
        row("everywhere, in the order of the keywords",
            {words({u"quagga"_s, u"zebra"_s}),
             {.path = u"/zebra/zebra.txt"_s, .modified = kOld, .text = "quagga"},
             5 + 10 + 3 + 6,
             {kText, kName, kFolder}});
        row("a keyword given twice",
            {words({u"zebra"_s, u"zebra"_s}), old(u"/f/zebra"_s), 32, {kName}});
        row("capitals are not lowered in keywords",
            {words({u"Zebra"_s}), old(u"/f/Zebra"_s), 6 * 0.6 * 0.75, {kName}});
        row("capitals beyond ASCII", {words({u"ärger"_s}), old(u"/f/ÄRGER"_s), 16, {kName}});
        row("synonyms", {words({u"tax"_s}), old(u"/f/w2.pdf"_s), 16, {kName}});

        row("phrase in the text", {phrase(u"quick plan"_s), saying("A Quick Plan"), 12, {kText}});
        row("phrase in text and name",
            {phrase(u"plan b"_s),
             {.path = u"/f/Plan B.txt"_s, .modified = kOld, .text = "plan b"},
             27,
             {kText, kName}});
        row("phrase word by word",
            {phrase(u"meeting about big boxes"_s), saying("box meet big"), 12, {kText}});
        row("two words of three", {phrase(u"one two three"_s), saying("three one"), 0});
        row("seven words of ten",
            {phrase(u"a1 a2 a3 a4 a5 a6 a7 b1 b2 b3"_s), saying("a7a6a5a4a3a2a1"), 12, {kText}});
        row("one word", {phrase(u"meeting"_s), saying("to meet"), 0});
        row("phrase with capitals", {phrase(u"Plan B"_s), saying("b plan"), 12, {kText}});

        row("modified at the start", {during(kRange), old(u"/x"_s), 8, {kRecency}});
        row("modified at the end",
            {during(kRange), {.path = u"/x"_s, .modified = kRange.end}, 8, {kRecency}});
        row("modified before", {during(kRange), {.path = u"/x"_s, .modified = kOld - 0.001}, 0});
        row("modified after",
            {during(kRange), {.path = u"/x"_s, .modified = kRange.end - -0.001}, 0});
        row("three dates",
            {during(kRange),
             {.path = u"/x"_s, .modified = kOld, .lastUsed = kOld, .downloaded = kOld},
             24,
             {kRecency, kDownload, kLastUsed}});
        row("downloaded in the range",
            {during(kRange),
             {.path = u"/x"_s, .modified = kOld - kDay, .downloaded = kRange.end},
             10,
             {kDownload}});
        row("used in the range",
            {during(kRange),
             {.path = u"/x"_s, .modified = kOld - kDay, .lastUsed = kRange.start},
             6,
             {kLastUsed}});

        using enum FileType;
        row("kind", {ofKind(pdf), old(u"/f/x.PDF"_s), 6, {kKind}});
        row("another kind", {ofKind(pdf), old(u"/f/x.txt"_s), 0});
        row("markdown is a document", {ofKind(document), old(u"/f/x.md"_s), 6, {kKind}});
        row("text is a document", {ofKind(document), old(u"/f/x.log"_s), 6, {kKind}});
        row("a document is no text", {ofKind(FileType::text), old(u"/f/x.docx"_s), 0});
        row("code is no document", {ofKind(document), old(u"/f/x.py"_s), 0});
        row("screenshot as image", {ofKind(image), old(u"/f/screenshot_1.pdf"_s), 6, {kKind}});
        row("image as screenshot", {ofKind(screenshot), old(u"/f/screen1.png"_s), 6, {kKind}});
        row("mere image", {ofKind(screenshot), old(u"/f/x.png"_s), 0});
        row("kind and screenshot",
            {ofKind(screenshot, true), old(u"/Desktop/x.png"_s), 14, {kKind}});
        for (const QString &path : {u"/f/My ScreenShot.txt"_s,
                                    u"/f/a screen shot.doc"_s,
                                    u"/f/screen capture"_s,
                                    u"/f/Screen.jpg"_s,
                                    u"/f/my capture.heic"_s,
                                    u"/f/CleanShot 1.png"_s,
                                    u"/f/shottr.gif"_s,
                                    u"/f/by Snagit.webp"_s,
                                    u"/f/ScreenShots/x.svg"_s,
                                    u"/f/Screen Shots/x.bmp"_s,
                                    u"/f/Desktop/a/b/x.jpeg"_s})
            row(qPrintable(path), {screenshots(), old(path), 8, {kKind}});
        for (const QString &path : {u"/f/screen.txt"_s,
                                    u"/f/my screen.png"_s,
                                    u"/Desktop/x.pdf"_s,
                                    u"/f/cleanshot.mov"_s})
            row(qPrintable(path), {screenshots(), old(path), 0});

        row("semantic", {zebra, old(u"/x"_s), 7.5, {kSemantic}, 0.5});
        row("semantic at most", {zebra, old(u"/x"_s), 15, {kSemantic}, 1});
        row("semantic at the threshold", {zebra, old(u"/x"_s), 0, {}, 0.35});
        row("source", {zebra, from(u"https://ZEBRA.example"_s), 5, {kDownload}});
        row("variant in the source", {words({u"zebras"_s}), from(u"zebra"_s), 0});
        row("synonyms in the source",
            {words({u"invoice"_s}), from(u"billing/invoice"_s), 15, {kDownload}});

        const auto ages = [](double modified, std::optional<Instant> used = {}) {
            return FileFacts{.path = u"/x"_s, .modified = kNow - modified * kDay, .lastUsed = used};
        };
        row("modified now", {zebra, ages(0), 2});
        row("modified 3 days ago", {zebra, ages(3), 2});
        row("modified in the future", {zebra, ages(-400), 2});
        row("modified 7 days ago", {zebra, ages(7), 1});
        row("modified 29 days ago", {zebra, ages(29.99), 1});
        row("modified 30 days ago", {zebra, ages(30), 0});
        row("used 2 days ago", {zebra, ages(60, kNow - 2.99 * kDay), 3});
        row("used in the future", {zebra, ages(60, kNow - -5 * kDay), 3});
        row("used 3 days ago", {zebra, ages(60, kNow - 3 * kDay), 1.5});
        row("used 7 days ago", {zebra, ages(60, kNow - 7 * kDay), 0});
        row("modified and used", {zebra, ages(1, kNow), 5});
    }
    void scores()
    {
        QFETCH(Case, c);
        if (c.semantic > 0)
            m_semantic.scores.insert(c.file.path, c.semantic);
        // The other files see to it that nothing is carried over from one to the next.
        const FileFacts distraction{.path = u"/Zebra Desktop/zebra plan b.png"_s,
                                    .text = "zebra plan",
                                    .source = u"zebra"_s};
        const auto results = search({}, c.intent, {indexedFile(distraction), indexedFile(c.file)});
        const auto at = std::ranges::find(
            results, c.file.path, [](const SearchResult &result) { return result.file->path; });
        QCOMPARE(at != results.end(), c.points > 0);
        if (at == results.end())
            return;
        QVERIFY2(std::abs(at->relevanceScore - c.points) < 1e-9,
                 qPrintable(u"%1 points"_s.arg(at->relevanceScore, 0, 'g', 17)));
        QCOMPARE(labels(at->matchReasons), c.reasons);
        QVERIFY(!at->id.isNull());
    }

    void ranksTheBestFifteen()
    {
        QList<IndexedFile> files;
        for (int i = 0; i < 40; ++i)
            files.append(indexedFile({.path = u"/f/%1.txt"_s.arg(i), .modified = kNow}));
        const QList<IndexedFile> equals = files;
        QCOMPARE(found(search({}, words({u"zebra"_s}), equals)), paths(equals.first(15)));
        // One of the last is better, and one earns less than the rest.
        files[37] = indexedFile({.path = u"/f/zebra"_s, .modified = kNow});
        files[3] = indexedFile({.path = u"/f/less"_s, .modified = kNow - 8 * kDay});
        QList<IndexedFile> expected = files.first(15);
        expected.removeAt(3);
        expected.prepend(files[37]);
        QCOMPARE(found(search({}, words({u"zebra"_s}), files)), paths(expected));
        QVERIFY(search({}, words({u"zebra"_s}), {}).isEmpty());
    }

    void looksForNothingInVain()
    {
        const QList<IndexedFile> files{indexedFile({.path = u"/f/thing.txt"_s, .modified = kNow})};
        QVERIFY(search(u"show me the thing"_s, {}, files).isEmpty());
        QVERIFY(search(u"thing thing.txt"_s, Intent{}, files).isEmpty());
        QVERIFY(search(QString(), {}, files).isEmpty());
        QVERIFY(m_semantic.queries.isEmpty());
        // One thing of five is enough.
        for (const Intent &intent : {words({u"zebra"_s}),
                                     phrase(u"zebra"_s),
                                     during(kRange),
                                     ofKind(FileType::pdf),
                                     screenshots()})
            QCOMPARE(search(u"x"_s, intent, files).size(), 1);
        QCOMPARE(search(u"since yesterday"_s, Intent{}, files).size(), 1);
        QCOMPARE(m_semantic.queries.size(), 6);
    }

    void asksForSemanticMatches()
    {
        search(u"My Zebra?"_s, {}, {});
        QCOMPARE(m_semantic.queries, QStringList{u"My Zebra?"_s});
        QCOMPARE(m_semantic.threshold, 0.35);
        QCOMPARE(m_semantic.maxResults, 30);
    }

    void readsRequestsItself()
    {
        const QList<IndexedFile> files{
            indexedFile({.path = u"/Desktop/a.png"_s, .modified = kOld}),
            indexedFile({.path = u"/f/b.png"_s, .modified = kNow - 24 * kHour}),
            indexedFile({.path = u"/f/c.png"_s, .modified = kOld})};
        const auto results = search(u"screenshot from yesterday"_s, {}, files);
        QCOMPARE(found(results), paths(files.first(2)));
        QCOMPARE(results[0].relevanceScore, 14.0);
        QCOMPARE(labels(results[0].matchReasons), QStringList{kKind});
        QCOMPARE(results[1].relevanceScore, 10.0);
        QCOMPARE(labels(results[1].matchReasons), QStringList{kRecency});
    }

    void summarises_data()
    {
        QTest::addColumn<Case>("c");
        QTest::addColumn<QString>("summary");
        const auto downloaded = [](const QString &source) {
            return Case{.intent = during(kRange),
                        .file = {.path = u"/x"_s,
                                 .modified = kNow - 2 * kDay,
                                 .downloaded = kOld,
                                 .source = source}};
        };
        QTest::newRow("no reasons")
            << Case{words({u"zebra"_s}), {.path = u"/x"_s, .modified = kNow - 3.5 * kDay}}
            << u"Modified 3 days ago."_s;
        QTest::newRow("future") << Case{words({u"zebra"_s}),
                                        {.path = u"/x"_s, .modified = kNow - -2 * kHour}}
                                << u"Modified in 2 hours."_s;
        QTest::newRow("matches")
            << Case{words({u"zebra"_s}),
                    {.path = u"/zebra/zebra"_s, .modified = kNow - kDay, .text = "zebra"}}
            << u"Modified 1 day ago. Matched by filename match, folder match, content match."_s;
        QTest::newRow("all sentences")
            << Case{.intent = during({kOld, kNow}),
                    .file = {.path = u"/x"_s,
                             .modified = kNow - 60,
                             .lastUsed = kNow - 14 * kDay,
                             .downloaded = kOld,
                             .source = u"https://example.com/x"_s},
                    .semantic = 0.9}
            << u"Modified 1 minute ago. Semantically relevant to your query. Downloaded from "
               "example.com. Last opened 2 weeks ago. Matched by recently modified."_s;
        const QString begin = u"Modified 2 days ago. Downloaded from "_s;
        QTest::newRow("host") << downloaded(u"https://me:pw@files.example.org:8080/a b?c#d"_s)
                              << begin + u"files.example.org."_s;
        for (const QString &source : {u"AirDrop from Bob"_s, u"example.com/x"_s, u"mailto:a@b.c"_s})
            QTest::newRow(qPrintable(source)) << downloaded(source) << begin + source + u'.';
        Case noSource = downloaded({});
        noSource.file.source.reset();
        QTest::newRow("no source") << noSource << u"Modified 2 days ago."_s;
    }
    void summarises()
    {
        QFETCH(Case, c);
        if (c.semantic > 0)
            m_semantic.scores.insert(c.file.path, c.semantic);
        const auto results = search({}, c.intent, {indexedFile(c.file)});
        QCOMPARE(results.size(), 1);
        QTEST(results.first().summary, "summary");
    }

    void answersAnyRequest()
    {
        const QList<IndexedFile> files{
            indexedFile({.path = u"/f/Zebra.txt"_s, .modified = kOld, .text = "zebra"}),
            indexedFile({.path = u"/f/תקציב.pdf"_s, .modified = kOld}),
            indexedFile({.path = u"/f/🦓.pdf"_s, .modified = kOld})};
        QString manyWords = u"zebra"_s;
        for (int i = 0; manyWords.size() < 100'000; ++i)
            manyWords += u" w%1x"_s.arg(i);
        QCOMPARE(found(search(manyWords, {}, files)), paths(files.first(1)));
        QVERIFY(search(QString(100'000, u'z'), {}, files).isEmpty());
        QVERIFY(search(u"with "_s + u"a\u0301 "_s.repeated(33'333), {}, files).isEmpty());
        QVERIFY(search(u"🦓👨‍👩‍👧🇩🇪"_s.repeated(1000), {}, files).isEmpty());
        QVERIFY(search(QString(u'\0') + QChar(0xd800), {}, files).isEmpty());
        QCOMPARE(found(search(u"\u202eאת תקציב של"_s, {}, files)), paths({files[1]}));
    }

private:
    QList<SearchResult> search(const QString &query,
                               const std::optional<Intent> &intent,
                               const QList<IndexedFile> &files)
    {
        const FileSearchService service(std::make_unique<FakeSemanticSearch>(m_semantic),
                                        SpotlightMetadataService(nullptr, nullptr),
                                        Clock(kNow));
        return service.search(query, intent, files);
    }
    static QStringList paths(const QList<IndexedFile> &files)
    {
        QStringList list;
        for (const IndexedFile &file : files)
            list.append(file->path);
        return list;
    }
    static QStringList found(const QList<SearchResult> &results)
    {
        QList<IndexedFile> files;
        for (const SearchResult &result : results)
            files.append(result.file);
        return paths(files);
    }

    FakeSemanticSearch::State m_semantic;
};

QTEST_GUILESS_MAIN(TstFileSearchService)
#include "tst_FileSearchService.moc"
