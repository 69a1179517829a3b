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
#include <QThread>

#include <atomic>

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
    /// Where set, the next request waits here before it is understood, or a file before it is told
    /// of.
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
        if (const auto held = std::exchange(gate, nullptr)) {
            const QFuture<void> opened = held->future();
            co_await opened;
        }
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

/// Watches that a source is read beside the UI thread, and one thing at a time.
class ReaderWatch
{
public:
    mutable std::atomic<int> faults = 0;

    void read() const
    {
        if (m_isReading.exchange(true) || QThread::currentThread() == qApp->thread())
            ++faults;
        QThread::msleep(2); // long enough for another to come by
        m_isReading = false;
    }

private:
    mutable std::atomic<bool> m_isReading = false;
};

class FakeCalendar final : public CalendarService
{
public:
    using CalendarService::CalendarService;
    bool isGranted = true;
    std::optional<DateRange> anchor;
    QList<CalendarSearchResult> events;
    mutable QStringList seenNames;
    mutable QList<std::optional<DateRange>> seenRanges;
    ReaderWatch watch;

    QCoro::Task<void> requestAccess(Asking) override { co_return; }
    [[nodiscard]] bool hasAccess() const override { return isGranted; }
    [[nodiscard]] QList<CalendarSearchResult>
    searchEvents(const QString &, const std::optional<DateRange> &dateRange) const override
    {
        watch.read();
        seenRanges.append(dateRange);
        return events;
    }
    [[nodiscard]] std::optional<DateRange> findDateAnchor(const QString &text) const override
    {
        watch.read();
        seenNames.append(text);
        return anchor;
    }
};

/// Knows contacts by the names that a test gives them.
class FakeContacts final : public ContactsService
{
public:
    using ContactsService::ContactsService;
    bool isGranted = true;
    QMultiHash<QString, ResolvedContact> contacts; ///< of one name, the last first
    ReaderWatch watch;

    QCoro::Task<void> requestAccess(Asking) override { co_return; }
    [[nodiscard]] bool hasAccess() const override { return isGranted; }
    [[nodiscard]] QList<ResolvedContact> findContacts(const QString &name) const override
    {
        watch.read();
        return contacts.values(name);
    }
    void add(const QString &name, const QStringList &emails)
    {
        contacts.insert(name, {.fullName = name, .emails = emails, .phoneNumbers = {}});
    }
};

class FakeMail final : public MailSearchService
{
public:
    QList<MailSearchResult> mails;
    std::optional<QString> seenSender;
    QList<std::optional<DateRange>> seenRanges;

    QCoro::Task<QList<MailSearchResult>> searchMail(QString,
                                                    std::optional<QString> senderEmail,
                                                    std::optional<DateRange> dateRange) override
    {
        seenSender = senderEmail;
        seenRanges.append(dateRange);
        co_return mails;
    }
};

class FakeMessages final : public MessagesService
{
public:
    bool isThere = true;
    QList<MessageSearchResult> messages;
    mutable QString seenQuery;
    mutable std::optional<QString> seenContact;

    [[nodiscard]] bool isAccessible() const override { return isThere; }
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

        /// Of sources that may all be read, or of none.
        explicit Conversation(bool isAllowed = true)
        {
            home.platform.clock = Clock(kNow);
            command = &install<FakeQueryCommand>(home.platform.metadataQueryCommand);
            workspace = &install<FakeWorkspace>(home.platform.workspace);
            AppServices services(home.platform);
            model = &install<FakeModel>(services.llm);
            calendar = &install<FakeCalendar>(services.calendar, home.platform);
            contacts = &install<FakeContacts>(services.contacts, home.platform);
            mail = &install<FakeMail>(services.mail);
            messages = &install<FakeMessages>(services.messages);
            calendar->isGranted = contacts->isGranted = messages->isThere = isAllowed;
            state = std::make_unique<AppState>(home.platform, std::move(services));
        }
        /// Has the model wait, until what is returned is finished: a worker may well be done before
        /// it is waited for, and all be answered at once.
        [[nodiscard]] std::shared_ptr<QPromise<void>> holdModel() const
        {
            model->gate = std::make_shared<QPromise<void>>();
            model->gate->start();
            return model->gate;
        }
        void ask(const QString &request, const QList<IndexedFile> &files)
        {
            state->submitQuery(request, files);
            QTRY_VERIFY(!state->isSearching());
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
        const auto gate = chat.holdModel();
        chat.state->submitQuery(u"  budget\n"_s, files);
        QVERIFY(chat.state->isSearching());
        QCOMPARE(chat.state->messages().size(), 1);
        QVERIFY(chat.state->messages().first().isUser);
        QCOMPARE(chat.state->messages().first().content, u"budget"_s);
        QVERIFY(chat.state->lastResults().isEmpty());

        gate->finish();
        QTRY_COMPARE(answered.size(), 1);
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

    void accessIsAskedForOneAfterTheOther()
    {
        SampleHome home;
        install<FakeEventStore>(home.platform.eventStore);
        install<FakeContactStore>(home.platform.contactStore);
        auto &prompt = install<FakeAccessPrompt>(home.platform.accessPrompt);
        prompt.answers = {{PersonalData::calendar, false}, {PersonalData::contacts, true}};
        prompt.gate = std::make_shared<QPromise<void>>();
        const auto gate = prompt.gate;
        gate->start();
        const AppState state(home.platform, AppServices(home.platform));
        QTRY_COMPARE(prompt.asked, QList{PersonalData::calendar});
        QTest::qWait(20);
        QCOMPARE(prompt.asked.size(), 1);
        QVERIFY(!state.isStarted());
        gate->finish();
        QTRY_VERIFY(state.isStarted());
        QCOMPARE(prompt.asked, QList({PersonalData::calendar, PersonalData::contacts}));
        QVERIFY(!state.calendarEnabled());
        QVERIFY(state.contactsEnabled());
    }

    void peopleEnrichTheIntent_data()
    {
        QTest::addColumn<QStringList>("people");
        QTest::addColumn<bool>("isAllowed");
        QTest::addColumn<bool>("hasRange");
        QTest::addColumn<double>("score"); // three for the folder, eight for the day
        QTest::addColumn<QString>("sender");
        QTest::addColumn<QString>("contact");
        const auto row = [](const char *name,
                            const QStringList &people,
                            bool isAllowed,
                            bool hasRange,
                            double score,
                            const QString &sender,
                            const QString &contact) {
            QTest::newRow(name) << people << isAllowed << hasRange << score << sender << contact;
        };
        const QString sarah = u"sarah@acme.example"_s;
        row("an address and a meeting", {u"Sarah"_s}, true, false, 11, sarah, sarah);
        row("a range of its own", {u"Sarah"_s}, true, true, 3, sarah, sarah);
        row("the second person's", {u"Idris"_s, u"Sarah"_s}, true, false, 11, sarah, sarah);
        row("nobody's", {u"Idris"_s}, true, false, 8, u""_s, u"Idris"_s);
        row("not allowed", {u"Sarah"_s}, false, false, 0, u""_s, u""_s);
        row("no people", {}, true, false, 0, u""_s, u""_s);
    }
    void peopleEnrichTheIntent()
    {
        QFETCH(QStringList, people);
        QFETCH(bool, isAllowed);
        QFETCH(bool, hasRange);
        Conversation chat(isAllowed);
        chat.contacts->add(u"Sarah"_s, {u"sarah@acme.example"_s, u"odd@"_s});
        chat.contacts->add(u"Sarah"_s, {}); // comes first
        chat.calendar->anchor = DateRange{kNow - 301 * kDay, kNow - 299 * kDay};
        chat.model->intent = ParsedSearchIntent{
            .keywords = {u"plan"_s}, .personNames = people, .wantsCrossApp = true};
        if (hasRange)
            chat.model->intent->dateRange = DateRange{kNow - 2 * kDay, kNow};
        chat.ask(u"the plan"_s, {old(u"/acme.example/letter.txt"_s)});
        const QList<SearchResult> results = chat.state->lastResults();
        QTEST(results.isEmpty() ? 0 : results.first().relevanceScore, "score");
        QTEST(chat.mail->seenSender.value_or(QString()), "sender");
        QTEST(chat.messages->seenContact.value_or(QString()), "contact");
        QCOMPARE(chat.messages->seenQuery, isAllowed ? u"plan"_s : u""_s);
        const bool needsAnchor = isAllowed && !hasRange;
        QCOMPARE(chat.calendar->seenNames, needsAnchor ? people.mid(0, 1) : QStringList());
        // The days of the meeting are for the files alone.
        const QList<std::optional<DateRange>> ranges{chat.model->intent->dateRange};
        QVERIFY(chat.mail->seenRanges == ranges);
        QCOMPARE(chat.calendar->seenRanges.size(), isAllowed ? 1 : 0);
        QVERIFY(!isAllowed || chat.calendar->seenRanges == ranges);
    }

    void filesAloneAskNoOtherSource()
    {
        Conversation chat;
        chat.contacts->add(u"Sarah"_s, {u"sarah@acme.example"_s});
        chat.model->intent = ParsedSearchIntent{.personNames = {u"Sarah"_s}};
        chat.ask(u"from Sarah"_s, {old(u"/acme.example/letter.txt"_s)});
        QCOMPARE(chat.state->lastResults().size(), 1);
        QVERIFY(chat.mail->seenRanges.isEmpty());
        QVERIFY(chat.messages->seenQuery.isEmpty());
        QVERIFY(chat.calendar->seenRanges.isEmpty());
        QVERIFY(chat.state->lastCrossAppResults().isEmpty());
    }

    void sourcesAreReadInWorkersOneThingAtATime()
    {
        Conversation chat;
        chat.model->intent =
            ParsedSearchIntent{.personNames = {u"Sarah"_s, u"Idris"_s}, .wantsCrossApp = true};
        for (int i = 0; i < 8; ++i)
            chat.state->submitQuery(u"anything"_s, {});
        QTRY_COMPARE(chat.state->messages().size(), 16);
        QCOMPARE(chat.calendar->seenRanges.size(), 8);
        QCOMPARE(chat.calendar->watch.faults.load(), 0);
        QCOMPARE(chat.contacts->watch.faults.load(), 0);
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
        QVERIFY(!chat.messages->seenContact);
        QCOMPARE(chat.calendar->seenRanges.size(), 1);
        QVERIFY(!chat.calendar->seenRanges[0]);
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
        const auto gate = chat.holdModel();
        chat.state->submitQuery(u"tell me about #1"_s, {});
        QVERIFY(chat.state->isSearching());
        QCOMPARE(chat.state->selectedResult(), std::optional(chat.state->lastResults()[0]));
        gate->finish();
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
        const auto gate = chat.holdModel();
        chat.state->generatePreviewInsights(old(file));
        QVERIFY(chat.state->isGeneratingInsights());
        gate->finish();
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
        const auto gate = chat.holdModel();
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
            chat.model->intent = ParsedSearchIntent{
                .keywords = {u"x"_s}, .personNames = {u"Sarah"_s}, .wantsCrossApp = true};
            chat.state->submitQuery(u"people looked up while it goes"_s, {});
            chat.model->intent->personNames.clear();
            chat.state->submitQuery(u"messages searched while it goes"_s, {});
        }
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
