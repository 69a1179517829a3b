// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/LocalModelServer.h"
#include "Services/OnDeviceLLMService.h"
#include "support/Fakes.h"
#include "support/ModelServer.h"
#include "support/SampleFiles.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace dugwise::test {

namespace {

using MatchReason = SearchResult::MatchReason;

// Noon of 31 March 2026.
constexpr Instant kNow{796'651'200};
const QString kQuery = u"the \"deck\" Zo\u00EB sent me"_s;

SearchResult result(const FileFacts &facts, const QList<MatchReason> &reasons = {})
{
    return {QUuid::createUuid(), indexedFile(facts), 1, reasons, {}};
}

QList<SearchResult> sampleResults(qsizetype count)
{
    QList<SearchResult> results{
        result({.path = u"/d/Q3 deck.pptx"_s,
                .modified = kNow - 15 * kDay,
                .text = "twelve bytes",
                .source = u"https://files.example.org/d?x=1"_s},
               {MatchReason::filename, MatchReason::recency}),
        result(
            {.path = u"/d/notes.txt"_s, .modified = kNow - 3 * kDay, .source = u"from a stick"_s}),
        result({.path = u"/d/say \"hi\" %1.pdf"_s,
                .modified = kNow - 500 * kDay,
                .text = QByteArray(1500, 'x')},
               {MatchReason::content}),
    };
    for (qsizetype i = 4; i <= count; ++i)
        results.append(result({.path = u"/d/plan %1.md"_s.arg(i), .modified = kNow}));
    return results.first(count);
}

QList<CrossAppResult> sampleCrossAppResults(qsizetype count)
{
    QList<CrossAppResult> results{
        {.source = CrossAppSource::email,
         .title = u"Budget"_s,
         .subtitle = u"Sarah"_s,
         .date = kNow - 2 * kHour},
        {.source = CrossAppSource::message,
         .title = u"From: Zo\u00EB"_s,
         .subtitle = u"2 hr. ago"_s,
         .date = kNow - 2 * kHour},
        {.source = CrossAppSource::calendar, .title = u"Review"_s, .date = kNow - -3 * kDay},
    };
    while (results.size() < count)
        results.append({.source = CrossAppSource::email, .title = u"more"_s, .date = kNow});
    return results.first(count);
}

/// The service over a model whose texts a test sets down.
struct Sample
{
    FakeLanguageModel model;
    OnDeviceLLMService service{&model, std::make_unique<MockLLMService>(), Clock(kNow)};
};

QString intentJson(const QString &category, const QString &recency, const QString &scope)
{
    return uR"({"keywords":["Deck "],"phrases":["q3 deck"],"fileCategory":"%1","recency":"%2",)"
           R"("personNames":["Zo\u00EB","B","C","D"],"searchScope":"%3"})"_s.arg(
               category, recency, scope);
}

} // namespace

class TstOnDeviceLLMService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void requestsAreThoseOfTheRecordedTexts_data()
    {
        QTest::addColumn<int>("results"); // below 0: not an answer
        QTest::addColumn<int>("crossAppResults");
        QTest::newRow("intent") << -1 << 0;
        QTest::newRow("insights") << -1 << 0;
        QTest::newRow("ranking") << -1 << 0;
        QTest::newRow("answer-both") << 8 << 7;
        QTest::newRow("answer-one-file") << 1 << 0;
        QTest::newRow("answer-cross-app") << 0 << 1;
        QTest::newRow("answer-nothing") << 0 << 0;
    }
    void requestsAreThoseOfTheRecordedTexts()
    {
        QFETCH(int, results);
        QFETCH(int, crossAppResults);
        const QString kind = QString::fromLatin1(QTest::currentDataTag());
        ModelServer server;
        LocalModelServer model({.url = server.base()});
        QCoro::waitFor(model.firstAnswer());
        OnDeviceLLMService service(&model, std::make_unique<MockLLMService>(), Clock(kNow));
        if (kind == "intent"_L1) {
            QCoro::waitFor(service.parseQuery(kQuery));
        } else if (kind == "insights"_L1) {
            const QString text = u"e\u0301"_s.repeated(10'000);
            QCoro::waitFor(service.generateInsights(text, u"a \"b\".txt"_s));
        } else if (kind == "ranking"_L1) {
            QCoro::waitFor(service.rerankResults(kQuery, sampleResults(12)));
        } else {
            QCoro::waitFor(service.generateResponse(
                kQuery, sampleResults(results), sampleCrossAppResults(crossAppResults)));
        }
        const QByteArray expected =
            readFile(u"%1/%2.json"_s.arg(QStringLiteral(DUGWISE_MODEL_REQUESTS), kind)).trimmed();
        QVERIFY(!expected.isEmpty());
        QCOMPARE(server.requests.size(), 2);
        QCOMPARE(server.requests.last().body, expected);
    }

    void withoutAModelTheFallbackAnswers()
    {
        Sample sample;
        sample.model.isThere = false;
        OnDeviceLLMService none(nullptr, std::make_unique<MockLLMService>(), Clock(kNow));
        for (OnDeviceLLMService *service : {&sample.service, &none}) {
            QVERIFY(!service->isAvailable());
            QCOMPARE(service->statusLabel(), u"Keyword Search"_s);
            const QList<SearchResult> results = sampleResults(3);
            QVERIFY(!QCoro::waitFor(service->parseQuery(kQuery)));
            QCOMPARE(QCoro::waitFor(service->rerankResults(kQuery, results)), results);
            QVERIFY(!QCoro::waitFor(service->generateInsights(u"text"_s, u"a.txt"_s)));
            QVERIFY(QCoro::waitFor(service->generateResponse(kQuery, results, {}))
                        .startsWith(u"I found 3 files matching your search"_s));
        }
        QVERIFY(sample.model.requests.isEmpty());
    }

    void aFailedRequestTakesTheFallback_data()
    {
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("no answer") << QStringList();
        QTest::newRow("words") << QStringList(5, u"I would rather not."_s);
        QTest::newRow("another form") << QStringList(5, u"{\"answer\": 42}"_s);
        QTest::newRow("a wrong choice")
            << QStringList(5, intentJson(u"photo"_s, u"today"_s, u"everything"_s));
    }
    void aFailedRequestTakesTheFallback()
    {
        QFETCH(QStringList, texts);
        Sample sample;
        sample.model.texts = texts;
        const QList<SearchResult> results = sampleResults(3);
        QCOMPARE(sample.service.statusLabel(), u"AI: On-Device"_s);
        QVERIFY(!QCoro::waitFor(sample.service.parseQuery(kQuery)));
        QCOMPARE(QCoro::waitFor(sample.service.rerankResults(kQuery, results)), results);
        QVERIFY(!QCoro::waitFor(sample.service.generateInsights(u"text"_s, u"a.txt"_s)));
        QCOMPARE(sample.model.requests.size(), 3);
        sample.model.texts.clear();
        QVERIFY(QCoro::waitFor(sample.service.generateResponse(kQuery, results, {}))
                    .startsWith(u"I found 3 files matching your search"_s));
    }

    void aGeneratedIntentBecomesOurs_data()
    {
        QTest::addColumn<QString>("category");
        QTest::addColumn<QString>("recency");
        QTest::addColumn<QString>("scope");
        QTest::addColumn<QString>("fileType");    // empty: any
        QTest::addColumn<double>("startsBefore"); // seconds before now, below 0: no range
        QTest::addColumn<double>("endsBefore");
        const double noon = 12 * kHour;
        const auto row = [](const char *category,
                            const char *recency,
                            const char *scope,
                            const char *fileType,
                            double startsBefore,
                            double endsBefore = 0) {
            QTest::addRow("%s %s %s", category, recency, scope)
                << QString::fromLatin1(category) << QString::fromLatin1(recency)
                << QString::fromLatin1(scope) << QString::fromLatin1(fileType) << startsBefore
                << endsBefore;
        };
        row("pdf", "today", "filesOnly", "pdf", noon);
        row("image", "yesterday", "emailsOnly", "image", noon + kDay, noon);
        row("screenshot", "lastWeek", "messagesOnly", "screenshot", 7 * kDay);
        row("document", "coupleWeeks", "calendarOnly", "document", 14 * kDay);
        row("presentation", "fewWeeks", "everything", "presentation", 21 * kDay);
        row("spreadsheet", "lastMonth", "everything", "spreadsheet", 31 * kDay);
        row("code", "fewMonths", "everything", "code", 90 * kDay);
        row("text", "recently", "everything", "text", 14 * kDay);
        row("any", "anyTime", "everything", "", -1);
    }
    void aGeneratedIntentBecomesOurs()
    {
        QFETCH(QString, category);
        QFETCH(QString, recency);
        QFETCH(QString, scope);
        QFETCH(QString, fileType);
        QFETCH(double, startsBefore);
        QFETCH(double, endsBefore);
        Sample sample;
        sample.model.texts = {intentJson(category, recency, scope)};
        const auto intent = QCoro::waitFor(sample.service.parseQuery(kQuery));
        QVERIFY(intent);
        ParsedSearchIntent expected{
            .keywords = {u"Deck "_s},
            .phrases = {u"q3 deck"_s},
            .fileType = fileTypeFromRawValue(fileType),
            .includeScreenshots = category == "screenshot"_L1,
            .personNames = {u"Zo\u00EB"_s, u"B"_s, u"C"_s},
            .wantsCrossApp = scope != "filesOnly"_L1,
        };
        if (startsBefore >= 0)
            expected.dateRange = {kNow - startsBefore, kNow - endsBefore};
        QVERIFY(*intent == expected);
    }

    void insightsKeepTheGivenName()
    {
        Sample sample;
        sample.model.texts = {
            u"{\"summary\":\"S\",\"keyPoints\":[\"1\",\"2\",\"3\",\"4\",\"5\",\"6\"],"
            "\"documentType\":\"lease\",\"entities\":[]}"_s};
        const auto insights =
            QCoro::waitFor(sample.service.generateInsights(u"text"_s, u"a.txt"_s));
        const DocumentInsightsResult expected{.fileName = u"a.txt"_s,
                                              .summary = u"S"_s,
                                              .keyPoints = {u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s},
                                              .documentType = u"lease"_s,
                                              .entities = {}};
        QVERIFY(insights == expected);
    }

    void aWantedOrderIsMerged_data()
    {
        QTest::addColumn<qsizetype>("count");
        QTest::addColumn<QString>("wanted");
        QTest::addColumn<QList<int>>("order");
        QTest::newRow("odd indices") << qsizetype{12} << u"[3, 3, 15, -1, 0]"_s
                                     << QList{3, 0, 1, 2, 4, 5, 6, 7, 8, 9, 10, 11};
        QTest::newRow("beyond the candidates")
            << qsizetype{12} << u"[11, 10, 1, 9223372036854775807]"_s
            << QList{1, 0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
        QTest::newRow("none") << qsizetype{3} << u"[]"_s << QList{0, 1, 2};
        QTest::newRow("all") << qsizetype{3} << u"[2, 1, 0]"_s << QList{2, 1, 0};
        QTest::newRow("cut to ten")
            << qsizetype{3} << u"[9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 2]"_s << QList{0, 1, 2};
    }
    void aWantedOrderIsMerged()
    {
        QFETCH(qsizetype, count);
        QFETCH(QString, wanted);
        QFETCH(QList<int>, order);
        Sample sample;
        sample.model.texts = {u"{\"rankedIndices\": %1}"_s.arg(wanted)};
        const QList<SearchResult> results = sampleResults(count);
        QList<SearchResult> expected;
        for (const int index : order)
            expected.append(results[index]);
        QCOMPARE(QCoro::waitFor(sample.service.rerankResults(kQuery, results)), expected);
        QCoro::waitFor(sample.service.rerankResults(kQuery, results.first(1)));
        QCOMPARE(sample.model.requests.size(), 1); // there is nothing to order in one
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstOnDeviceLLMService)
#include "tst_OnDeviceLLMService.moc"
