// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine/AnswerJson.h"
#include "CommandLine/AnswerText.h"
#include "CommandLine/Arguments.h"
#include "support/SampleFiles.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

namespace dugwise::test {

namespace {

constexpr Instant kNow{800'000'000};

ChatMessage sampleAnswer()
{
    return {
        .id = QUuid::createUuid(),
        .content = u"Look at **this** and ** that\n\033[31m"_s,
        .isUser = false,
        .timestamp = kNow,
        .results = {{QUuid::createUuid(),
                     indexedFile({.path = u"/home/me/a\033[31m\n\"b\".TXT"_s,
                                  .modified = {86400.5},
                                  .text = QByteArray("12345"),
                                  .downloaded = Instant{0}}),
                     12.25,
                     {SearchResult::MatchReason::filename},
                     u"Modified long ago."_s}},
        .crossAppResults = {{.id = QUuid::createUuid(),
                             .title = u"Lunch"_s,
                             .snippet = u"x \n\t\033"_s + u"\U0001F370"_s.repeated(40'000),
                             .date = kNow}},
        .insights = std::nullopt,
    };
}

} // namespace

class TstAnswers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void jsonHoldsTheWholeAnswerOnOneLine()
    {
        const QByteArray line = answerJson(u"why \"not\"\nnow"_s, {}, sampleAnswer());
        QVERIFY(!line.contains('\n'));
        const QJsonObject object = QJsonDocument::fromJson(line).object();
        QCOMPARE(object["request"_L1].toString(), u"why \"not\"\nnow"_s);
        QVERIFY(object["action"_L1].isNull());
        QVERIFY(object["insights"_L1].isNull());
        const QJsonObject result = object["results"_L1][0].toObject();
        QCOMPARE(result["number"_L1].toInt(), 1);
        QCOMPARE(result["path"_L1].toString(), u"/home/me/a\033[31m\n\"b\".TXT"_s);
        QCOMPARE(result["kind"_L1].toString(), u"text"_s);
        QCOMPARE(result["fileExtension"_L1].toString(), u"TXT"_s);
        QCOMPARE(result["modifiedDate"_L1].toDouble(), 86400.5);
        QCOMPARE(result["downloadDate"_L1], QJsonValue(0.0));
        QVERIFY(result["lastUsedDate"_L1].isNull());
        QCOMPARE(result["relevanceScore"_L1].toDouble(), 12.25);
        QCOMPARE(result["matchReasons"_L1], QJsonValue(QJsonArray{u"Filename match"_s}));
        const QJsonObject event = object["crossAppResults"_L1][0].toObject();
        QCOMPARE(event["source"_L1].toString(), u"Email"_s);
        QVERIFY(event["snippet"_L1].toString().size() > 80'000);
        QVERIFY(event["actionPath"_L1].isNull());

        const ChatAction action{ChatAction::Kind::getInsights, {}};
        ChatMessage told = sampleAnswer();
        told.insights = DocumentInsightsResult{.fileName = u"a"_s, .entities = {u"b"_s}};
        const QByteArray second = answerJson(u"x"_s, action, told);
        QVERIFY(second.contains(R"("action":"getInsights",)"));
        QVERIFY(second.endsWith(R"("insights":{"fileName":"a","summary":"","keyPoints":[],)"
                                R"("documentType":"","entities":["b"]}})"));
    }

    void textIsPlainForAPipeAndHarmlessToATerminal()
    {
        const TextStyle plain{.isTerminal = false, .home = u"/home/me"_s};
        const QString text = answerText(sampleAnswer(), plain, kNow);
        QVERIFY2(text.startsWith(u"Look at this and ** that\n"_s), qPrintable(text));
        QVERIFY(!text.contains(u'\033'));
        QVERIFY(text.contains(u"#1 "_s));
        QVERIFY(text.contains(u"Text, 5 bytes"_s));
        QVERIFY(text.contains(u"\n     ~\n"_s));
        // Of the notes of an event, the beginning on one line, no character cut.
        const QString notes = u"x \uFFFD"_s + u"\U0001F370"_s.repeated(148) + u"\u2026\n"_s;
        QVERIFY(text.endsWith(u"     "_s + notes));

        const TextStyle terminal{.isTerminal = true, .home = u"/elsewhere"_s};
        const QString dressed = answerText(sampleAnswer(), terminal, kNow);
        QVERIFY(dressed.startsWith(u"Look at \033[1mthis\033[22m and ** that\n"_s));
        QVERIFY(!dressed.contains(u"\033[31m"_s));
        QVERIFY(dressed.contains(u"/home/me"_s));
    }

    void argumentsAreRead()
    {
        using Command = Arguments::Command;
        const auto ask = parseArguments({u"ask"_s, u"--json"_s, u"my"_s, u"notes"_s});
        QVERIFY(ask);
        QCOMPARE(ask->command, Command::ask);
        QCOMPARE(ask->request, u"my notes"_s);
        QVERIFY(ask->json && ask->useSystemSearch);
        const auto dashed =
            parseArguments({u"ask"_s, u"--no-system-search"_s, u"--"_s, u"--json"_s});
        QVERIFY(dashed && !dashed->json && !dashed->useSystemSearch);
        QCOMPARE(dashed->request, u"--json"_s);
        QCOMPARE(parseArguments({u"folders"_s})->command, Command::foldersList);
        const auto add = parseArguments({u"folders"_s, u"add"_s, u"/tmp/../tmp/x/"_s});
        QCOMPARE(add->folder, u"/tmp/x"_s);
        QCOMPARE(parseArguments({})->command, Command::window);
        QCOMPARE(parseArguments({})->request, QString());
        QCOMPARE(parseArguments({u"--help"_s})->command, Command::help);
        QCOMPARE(parseArguments({u"--version"_s})->command, Command::version);
        QCOMPARE(parseArguments({u"ask"_s, u"--help"_s})->command, Command::help);
    }

    void anythingElseIsARequestForTheWindow_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QString>("request");
        QTest::newRow("words") << QStringList{u"my"_s, u"notes"_s} << u"my notes"_s;
        QTest::newRow("one word") << QStringList{u" status of this\n"_s} << u"status of this"_s;
        QTest::newRow("dash") << QStringList{u"--"_s, u"--json"_s, u"--"_s} << u"--json --"_s;
        QTest::newRow("command") << QStringList{u"--"_s, u"ask"_s, u"me"_s} << u"ask me"_s;
        QTest::newRow("dash later") << QStringList{u"my"_s, u"--"_s, u"-x"_s} << u"my -x"_s;
        QTest::newRow("blank") << QStringList{u" "_s, u""_s} << u""_s;
    }
    void anythingElseIsARequestForTheWindow()
    {
        QFETCH(const QStringList, words);
        const auto arguments = parseArguments(words);
        QVERIFY(arguments);
        QCOMPARE(arguments->command, Arguments::Command::window);
        QTEST(arguments->request, "request");
    }

    void misuseIsToldInOneLine_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::newRow("option of the window") << QStringList{u"--json"_s, u"lease"_s};
        QTest::newRow("unknown option") << QStringList{u"ask"_s, u"--fast"_s, u"x"_s};
        QTest::newRow("option alone") << QStringList{u"--json"_s};
        QTest::newRow("no request") << QStringList{u"ask"_s};
        QTest::newRow("blank request") << QStringList{u"ask"_s, u"  "_s, u"\n"_s};
        QTest::newRow("request for chat") << QStringList{u"chat"_s, u"hello"_s};
        QTest::newRow("option of another") << QStringList{u"index"_s, u"--json"_s};
        QTest::newRow("word too many") << QStringList{u"status"_s, u"now"_s};
        QTest::newRow("folders what") << QStringList{u"folders"_s, u"drop"_s};
        QTest::newRow("folders add what") << QStringList{u"folders"_s, u"add"_s};
        QTest::newRow("folders add two") << QStringList{u"folders"_s, u"add"_s, u"a"_s, u"b"_s};
    }
    void misuseIsToldInOneLine()
    {
        QFETCH(const QStringList, words);
        const auto arguments = parseArguments(words);
        QVERIFY(!arguments);
        QVERIFY(!arguments.error().isEmpty());
        QVERIFY(!arguments.error().contains(u'\n'));
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstAnswers)
#include "tst_Answers.moc"
