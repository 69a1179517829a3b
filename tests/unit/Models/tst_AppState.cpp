// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/AppState.h"
#include "Platform/Platform.h"
#include "support/Fakes.h"
#include "support/SampleFiles.h"
#include "support/SampleHome.h"

#include <QCoroFuture>
#include <QPromise>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace dugwise::test {

namespace {

using DateRange = DateIntentParser::DateRange;
using MatchReason = SearchResult::MatchReason;

/// A language model whose every answer the test decides.
class FakeModel final : public LLMServiceProtocol
{
public:
    std::optional<ParsedSearchIntent> intent;
    bool isReversing = false;
    /// Where set, the first request waits here before it is understood.
    std::shared_ptr<QPromise<void>> gate;
    std::optional<DocumentInsightsResult> insights;
    QString seenText;
    QList<SearchResult> seenResults;
    QList<CrossAppResult> seenCrossAppResults;

    QCoro::Task<std::optional<ParsedSearchIntent>> parseQuery(QString /*query*/) override
    {
        const auto answer = intent;
        if (const auto held = std::exchange(gate, nullptr)) {
            const QFuture<void> opened = held->future();
            co_await opened;
        }
        co_return answer;
    }
    QCoro::Task<QString> generateResponse(QString query,
                                          QList<SearchResult> results,
                                          QList<CrossAppResult> crossAppResults) override
    {
        seenResults = results;
        seenCrossAppResults = crossAppResults;
        co_return u"answer to "_s + query;
    }
    QCoro::Task<std::optional<DocumentInsightsResult>> generateInsights(QString text,
                                                                        QString fileName) override
    {
        seenText = text;
        std::optional<DocumentInsightsResult> answer = insights;
        if (answer)
            answer->fileName = fileName;
        co_return answer;
    }
    QCoro::Task<QList<SearchResult>> rerankResults(QString, QList<SearchResult> results) override
    {
        if (isReversing)
            std::reverse(results.begin(), results.end());
        co_return results;
    }
    [[nodiscard]] bool isAvailable() const override { return true; }
    [[nodiscard]] QString statusLabel() const override { return u"AI: Fake"_s; }
};

class FakeCalendar final : public CalendarService
{
public:
    std::optional<DateRange> anchor;
    QList<CalendarSearchResult> events;

    QCoro::Task<void> requestAccess() override { co_return; }
    [[nodiscard]] bool hasAccess() const override { return true; }
    [[nodiscard]] QList<CalendarSearchResult>
    searchEvents(const QString &, const std::optional<DateRange> &) const override
    {
        return events;
    }
    [[nodiscard]] std::optional<DateRange> findDateAnchor(const QString &) const override
    {
        return anchor;
    }
};

class FakeContacts final : public ContactsService
{
public:
    bool isGranted = true;
    QList<ResolvedContact> contacts;

    QCoro::Task<void> requestAccess() override { co_return; }
    [[nodiscard]] bool hasAccess() const override { return isGranted; }
    [[nodiscard]] QList<ResolvedContact> findContacts(const QString &) const override
    {
        return contacts;
    }
};

class FakeMail final : public MailSearchService
{
public:
    QList<MailSearchResult> mails;
    std::optional<QString> seenSender;

    QCoro::Task<QList<MailSearchResult>>
    searchMail(QString, std::optional<QString> senderEmail, std::optional<DateRange>) override
    {
        seenSender = senderEmail;
        co_return mails;
    }
};

class FakeMessages final : public MessagesService
{
public:
    QList<MessageSearchResult> messages;
    mutable QString seenQuery;
    mutable std::optional<QString> seenContact;

    [[nodiscard]] bool isAccessible() const override { return true; }
    [[nodiscard]] QList<MessageSearchResult> searchMessages(const QString &query,
                                                            const std::optional<QString> &contactID,
                                                            int limit) const override
    {
        seenQuery = query;
        seenContact = contactID;
        return messages.first(std::min<qsizetype>(limit, messages.size()));
    }
};

/// Prints the same paths to every search of the machine.
class FakeQueryCommand final : public MetadataQueryCommand
{
public:
    QStringList paths;

    QCoro::Task<std::optional<QByteArray>> run(QStringList /*arguments*/) override
    {
        co_return paths.join(u'\n').toUtf8();
    }
};

} // namespace

class TstAppState : public QObject
{
    Q_OBJECT

private:
    /// An AppState over fakes, and the fakes.
    struct Conversation
    {
        SampleHome home;
        FakeQueryCommand *command = nullptr;
        FakeModel *model = nullptr;
        FakeCalendar *calendar = nullptr;
        FakeContacts *contacts = nullptr;
        FakeMail *mail = nullptr;
        FakeMessages *messages = nullptr;
        FakeWorkspace *workspace = nullptr;
        std::unique_ptr<AppState> state;

        Conversation()
        {
            home.platform.clock = Clock(kNow);
            home.platform.metadataQueryCommand = adopt<FakeQueryCommand>(command);
            home.platform.workspace = adopt<FakeWorkspace>(workspace);
            AppServices services(home.platform);
            services.llm = adopt<FakeModel>(model);
            services.calendar = adopt<FakeCalendar>(calendar);
            services.contacts = adopt<FakeContacts>(contacts);
            services.mail = adopt<FakeMail>(mail);
            services.messages = adopt<FakeMessages>(messages);
            state = std::make_unique<AppState>(home.platform, std::move(services));
        }
        void ask(const QString &request, const QList<IndexedFile> &files)
        {
            state->submitQuery(request, files);
            QTRY_VERIFY(!state->isSearching());
        }

    private:
        template <typename T>
        static std::unique_ptr<T> adopt(T *&observer)
        {
            auto owned = std::make_unique<T>();
            observer = owned.get();
            return owned;
        }
    };

    static constexpr Instant kNow{800'000'000};

    static IndexedFile old(const QString &path)
    {
        return indexedFile({.path = path, .modified = kNow - 300 * kDay});
    }

    static QStringList paths(const QList<SearchResult> &results)
    {
        QStringList all;
        for (const SearchResult &result : results)
            all.append(result.file->path);
        return all;
    }

private Q_SLOTS:
    void startsWithTheServicesState()
    {
        Conversation chat;
        QCOMPARE(chat.state->aiStatusLabel(), u"AI: Fake"_s);
        QVERIFY(chat.state->isAIAvailable());
        QVERIFY(chat.state->messagesAccessible());
        QVERIFY(chat.state->calendarEnabled());
        QVERIFY(chat.state->contactsEnabled());
        QVERIFY(!chat.state->isSearching());
        QCOMPARE(chat.state->selectedSidebarItem(), SidebarItem::home);
    }

    void anEmptyRequestIsIgnored()
    {
        Conversation chat;
        chat.state->submitQuery(u" \n\t\u00A0 "_s, {});
        QVERIFY(!chat.state->isSearching());
        QVERIFY(chat.state->messages().isEmpty());
        QVERIFY(chat.state->recentSearches().isEmpty());
    }

    void anAnswerIsPublishedAsAWhole()
    {
        Conversation chat;
        chat.model->isReversing = true;
        QSignalSpy answered(chat.state.get(), &AppState::answered);
        const QList<IndexedFile> files{old(u"/d/budget.txt"_s), old(u"/d/budget budgets.txt"_s)};
        chat.state->submitQuery(u"  budget\n"_s, files);
        QVERIFY(chat.state->isSearching());
        QCOMPARE(chat.state->messages().size(), 1);
        QVERIFY(chat.state->messages().first().isUser);
        QCOMPARE(chat.state->messages().first().content, u"budget"_s);
        QVERIFY(chat.state->lastResults().isEmpty());

        QVERIFY(answered.wait());
        QVERIFY(!chat.state->isSearching());
        const ChatMessage &answer = chat.state->messages().last();
        QVERIFY(!answer.isUser);
        QCOMPARE(answer.content, u"answer to budget"_s);
        QCOMPARE(paths(answer.results),
                 QStringList({u"/d/budget.txt"_s, u"/d/budget budgets.txt"_s}));
        QCOMPARE(chat.state->lastResults(), answer.results);
        QCOMPARE(chat.model->seenResults, answer.results);
    }

    void systemHitsJoinTheResults()
    {
        Conversation chat;
        writeFile(chat.home.path(u"budget elsewhere.txt"_s), "x");
        chat.command->paths = {u"/d/budget.txt"_s, chat.home.path(u"budget elsewhere.txt"_s)};
        chat.ask(u"budget"_s, {old(u"/d/budget.txt"_s)});
        // Two points ahead, for having changed since.
        QCOMPARE(paths(chat.state->lastResults()),
                 QStringList({chat.home.path(u"budget elsewhere.txt"_s), u"/d/budget.txt"_s}));
        QVERIFY(!chat.state->lastResults().first().file->extractedText);
    }

    void systemHitsThatScoreNothingAreKeptWithFivePoints()
    {
        Conversation chat;
        chat.model->intent = ParsedSearchIntent{.keywords = {u"nowhere"_s}};
        for (int i = 0; i < 12; ++i) {
            // Older than the last month, or else they would earn points for being new.
            const QString path = chat.home.path(u"far %1.bin"_s.arg(i));
            writeFile(path, "x");
            QFile file(path);
            QVERIFY(file.open(QFile::ReadWrite));
            QVERIFY(file.setFileTime(QDateTime::fromSecsSinceEpoch(0),
                                     QFileDevice::FileModificationTime));
            chat.command->paths.append(path);
        }
        chat.ask(u"nowhere"_s, {});
        QCOMPARE(chat.state->lastResults().size(), 10);
        const SearchResult first = chat.state->lastResults().first();
        QCOMPARE(first.file->path, chat.command->paths.first());
        QCOMPARE(first.relevanceScore, 5.0);
        QCOMPARE(first.matchReasons, QList{MatchReason::filename});
        QCOMPARE(first.summary, u"Found via Spotlight system search."_s);
    }

    void atMostTwentyResultsAreKept()
    {
        Conversation chat;
        QList<IndexedFile> files;
        for (int i = 0; i < 30; ++i) {
            files.append(old(u"/d/budget %1.txt"_s.arg(i)));
            chat.command->paths.append(u"/e/budgets %1.txt"_s.arg(i));
        }
        chat.ask(u"budget"_s, files);
        const QList<SearchResult> results = chat.state->lastResults();
        QCOMPARE(results.size(), 20); // fifteen of each kind, cut
        QVERIFY(
            std::ranges::is_sorted(results, std::ranges::greater(), &SearchResult::relevanceScore));
        QCOMPARE(results.first().file->path, u"/e/budgets 0.txt"_s);
    }

    void peopleEnrichTheIntent()
    {
        Conversation chat;
        chat.model->intent = ParsedSearchIntent{
            .keywords = {u"plan"_s}, .personNames = {u"Sarah"_s}, .wantsCrossApp = true};
        chat.contacts->contacts = {{.fullName = u"Sarah"_s, .emails = {}, .phoneNumbers = {}},
                                   {.fullName = u"Sarah Lee"_s,
                                    .emails = {u"sarah@acme.example"_s, u"odd@"_s},
                                    .phoneNumbers = {}}};
        chat.calendar->anchor = DateRange{kNow - 301 * kDay, kNow - 299 * kDay};
        chat.ask(u"plan"_s, {old(u"/acme.example/letter.txt"_s)});
        // Three points for the folder and eight for the day of the meeting.
        QCOMPARE(chat.state->lastResults().first().relevanceScore, 11.0);
        QCOMPARE(chat.mail->seenSender, std::optional(u"sarah@acme.example"_s));
        QCOMPARE(chat.messages->seenContact, chat.mail->seenSender);
        QCOMPARE(chat.messages->seenQuery, u"plan"_s);

        chat.model->intent->dateRange = DateRange{kNow - 2 * kDay, kNow};
        chat.ask(u"plan"_s, {old(u"/acme.example/letter.txt"_s)});
        QCOMPARE(chat.state->lastResults().first().relevanceScore, 3.0);
    }

    void otherSourcesAreAskedInOrderAndCut()
    {
        Conversation chat;
        for (int i = 0; i < 12; ++i) {
            chat.mail->mails.append({.id = {}, .subject = u"mail %1"_s.arg(i), .path = u"/m"_s});
            chat.messages->messages.append({.id = {},
                                            .sender = u"+1 %1"_s.arg(i),
                                            .text = u"hi"_s,
                                            .date = kNow - 2 * kHour,
                                            .isFromMe = i == 0});
            chat.calendar->events.append(
                {.id = {}, .eventTitle = u"event"_s, .relevanceScore = 0.5});
        }
        chat.ask(u"anything"_s, {});
        const QList<CrossAppResult> results = chat.state->lastCrossAppResults();
        QCOMPARE(results.size(), 5 + 5 + 3);
        QCOMPARE(results[0].title, u"mail 0"_s);
        QCOMPARE(results[0].actionPath, std::optional(u"/m"_s));
        QCOMPARE(results[5].title, u"To: +1 0"_s);
        QCOMPARE(results[5].subtitle, u"2 hr. ago"_s);
        QCOMPARE(results[6].title, u"From: +1 1"_s);
        QCOMPARE(results[10].relevanceScore, 0.5);
        QCOMPARE(results[10].subtitle, QString());
        QCOMPARE(chat.model->seenCrossAppResults, results);
        QVERIFY(!chat.mail->seenSender);

        chat.model->intent = ParsedSearchIntent{.keywords = {u"anything"_s}};
        chat.ask(u"anything"_s, {});
        QVERIFY(chat.state->lastCrossAppResults().isEmpty());
    }

    void aCommandOpensAFile()
    {
        Conversation chat;
        chat.ask(u"budget"_s, {old(u"/d/budget.txt"_s), old(u"/d/a **budget** %1.txt"_s)});
        const QList<SearchResult> results = chat.state->lastResults();
        QVERIFY(!chat.state->latestAction());
        QSignalSpy answered(chat.state.get(), &AppState::answered);
        chat.state->submitQuery(u" open #2 "_s, {});
        QCOMPARE(answered.size(), 1);
        QCOMPARE(chat.workspace->opened, QStringList{results[1].file->path});
        QCOMPARE(chat.state->latestAction()->kind, ChatAction::Kind::openFile);
        const QList<ChatMessage> messages = chat.state->messages();
        QCOMPARE(messages.size(), 4);
        QCOMPARE(messages[2].content, u"open #2"_s);
        QCOMPARE(messages[3].content, u"Opening **%1** for you."_s.arg(results[1].file->name));
        QVERIFY(messages[2].isUser && !messages[3].isUser && messages[3].results.isEmpty());
        QCOMPARE(chat.state->recentSearches(), QStringList{u"budget"_s});
        QCOMPARE(chat.state->lastResults(), results);
        QVERIFY(!chat.state->selectedResult());
        QVERIFY(!chat.state->isSearching());
    }

    void aCommandTellsOfAFile()
    {
        Conversation chat;
        const QString file = chat.home.path(u"budget.txt"_s);
        writeFile(file, QByteArray("word ").repeated(2000));
        chat.model->insights = DocumentInsightsResult{.summary = u"Sums."_s};
        chat.ask(u"budget"_s, {old(file), old(u"/d/budget.bin"_s)});
        chat.state->submitQuery(u"tell me about #1"_s, {});
        QVERIFY(chat.state->isSearching());
        QCOMPARE(chat.state->selectedResult(), std::optional(chat.state->lastResults()[0]));
        QTRY_VERIFY(!chat.state->isSearching());
        const ChatMessage answer = chat.state->messages().last();
        QVERIFY(answer.content.startsWith(u"Here's what I found in **budget.txt**:"_s));
        QCOMPARE(answer.insights->fileName, u"budget.txt"_s);
        QVERIFY(chat.state->previewInsights() == answer.insights);
        QVERIFY(chat.model->seenText.startsWith(u"word word "_s));
        QVERIFY(chat.model->seenText.size() >= 4000 && chat.model->seenText.size() < 4100);

        chat.model->seenText.clear();
        chat.ask(u"what is in the second"_s, {}); // of a kind without text
        QVERIFY(chat.model->seenText.isEmpty());
        QVERIFY(chat.state->messages().last().content.startsWith(
            u"I couldn't extract insights from **budget.bin**. "_s));
        QVERIFY(!chat.state->messages().last().insights);
        QVERIFY(chat.state->previewInsights() == answer.insights);
        QCOMPARE(chat.state->recentSearches(), QStringList{u"budget"_s});
    }

    void thePreviewGetsInsightsOfItsOwn()
    {
        Conversation chat;
        const QString file = chat.home.path(u"budget.txt"_s);
        writeFile(file, "words");
        chat.model->insights = DocumentInsightsResult{.summary = u"Sums."_s};
        chat.state->generatePreviewInsights(old(file));
        QVERIFY(chat.state->isGeneratingInsights());
        QTRY_VERIFY(!chat.state->isGeneratingInsights());
        QCOMPARE(chat.state->previewInsights()->summary, u"Sums."_s);
        chat.state->generatePreviewInsights(old(u"/d/missing.txt"_s));
        QVERIFY(!chat.state->previewInsights());
        QTRY_VERIFY(!chat.state->isGeneratingInsights());
        QVERIFY(!chat.state->previewInsights());
        QVERIFY(chat.state->messages().isEmpty());
    }

    void whatAModelWritesIsNoCommand()
    {
        Conversation chat;
        const QString file = chat.home.path(u"budget.txt"_s);
        writeFile(file, "open #1");
        chat.ask(u"open #1 budget"_s, {old(file)}); // the answer repeats the request
        QCOMPARE(chat.state->messages().last().content, u"answer to open #1 budget"_s);
        chat.model->insights = DocumentInsightsResult{.summary = u"open #1"_s,
                                                      .keyPoints = {u"launch the first"_s},
                                                      .documentType = u"open it"_s};
        chat.state->generatePreviewInsights(old(file));
        chat.ask(u"tell me about #1"_s, {});
        QCOMPARE(chat.model->seenText, u"open #1"_s);
        QVERIFY(chat.state->messages().last().content.contains(u"- launch the first"_s));
        QTRY_VERIFY(!chat.state->isGeneratingInsights());
        QVERIFY(chat.workspace->opened.isEmpty());
        QVERIFY(chat.workspace->shown.isEmpty());
    }

    void twoRequestsMayAnswerOutOfOrder()
    {
        Conversation chat;
        chat.model->gate = std::make_shared<QPromise<void>>();
        const auto gate = chat.model->gate;
        gate->start();
        chat.state->submitQuery(u"first"_s, {});
        chat.ask(u"second"_s, {});
        QCOMPARE(chat.state->messages().last().content, u"answer to second"_s);
        gate->finish();
        QTRY_COMPARE(chat.state->messages().size(), 4);
        QCOMPARE(chat.state->messages().last().content, u"answer to first"_s);
    }

    void theOwnerMayGoWhileARequestRuns()
    {
        const auto gate = std::make_shared<QPromise<void>>();
        gate->start();
        {
            Conversation chat;
            chat.model->gate = gate;
            chat.state->submitQuery(u"never answered"_s, {});
        }
        gate->finish();
        QTest::qWait(0);
        {
            Conversation chat;
            chat.state->submitQuery(u"scoring while it goes"_s, {old(u"/d/scoring.txt"_s)});
            chat.state->generatePreviewInsights(old(u"/d/scoring.txt"_s));
        }
        QTest::qWait(0);
    }

    void recentSearchesPersist()
    {
        Conversation chat;
        for (int i = 0; i < 11; ++i)
            chat.ask(u"request %1"_s.arg(i), {});
        chat.ask(u"request 5"_s, {});
        chat.ask(u"Request 5"_s, {});
        const QStringList searches = chat.state->recentSearches();
        QCOMPARE(searches.size(), 10);
        QCOMPARE(searches.first(2), QStringList({u"Request 5"_s, u"request 5"_s}));
        QVERIFY(!searches.contains(u"request 1"_s));

        const AppState later(chat.home.platform, AppServices(chat.home.platform));
        QCOMPARE(later.recentSearches(), searches);
    }

    void clearingKeepsTheRecentSearches()
    {
        Conversation chat;
        chat.ask(u"budget"_s, {old(u"/d/budget.txt"_s)});
        chat.state->setSelectedResult(chat.state->lastResults().first());
        chat.state->clearChat();
        QVERIFY(chat.state->messages().isEmpty());
        QVERIFY(chat.state->lastResults().isEmpty());
        QVERIFY(!chat.state->selectedResult());
        QCOMPARE(chat.state->recentSearches(), QStringList{u"budget"_s});
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstAppState)
#include "tst_AppState.moc"
