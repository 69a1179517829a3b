// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/AppState.h"

#include "Models/ChatCommands.h"
#include "Models/FileResults.h"
#include "Platform/Platform.h"

#include <QCoroFuture>
#include <QPointer>
#include <QThread>
#include <QtConcurrentRun>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr qsizetype kMostRecentSearches = 10;
constexpr std::size_t kMostInsightsText = 4000; // characters

/// What follows the last "@" of each address, where anything does.
QStringList domainsOf(const QStringList &addresses)
{
    QStringList domains;
    for (const QString &address : addresses) {
        const QString domain = address.section(u'@', -1);
        if (!domain.isEmpty())
            domains.append(domain);
    }
    return domains;
}

} // namespace

AppState::AppState(Platform &platform, AppServices services, QObject *parent)
    : QObject(parent)
    , m_platform(platform)
    , m_services(std::move(services))
    , m_crossApp(m_services, platform.clock)
    , m_recentSearches(platform.userDefaults.stringList(kRecentSearchesKey).value_or(QStringList()))
    , m_aiStatusLabel(u"Checking..."_s)
{
    m_workers.setMaxThreadCount(std::max(2, QThread::idealThreadCount()));
    publish(m_messagesAccessible,
            m_services.messages->isAccessible(),
            &AppState::messagesAccessibleChanged);
    readModelStatus();
    requestAccess();
}

AppState::~AppState()
{
    m_stop.request_stop();
    m_workers.waitForDone();
}

bool AppState::isAIAvailable() const
{
    return m_services.llm->isAvailable();
}

void AppState::setSelectedSidebarItem(SidebarItem item)
{
    publish(m_selectedSidebarItem, item, &AppState::selectedSidebarItemChanged);
}

void AppState::setSelectedResult(const std::optional<SearchResult> &result)
{
    m_selectedResult = result;
    Q_EMIT selectedResultChanged();
}

void AppState::setPendingQuery(const std::optional<QString> &query)
{
    publish(m_pendingQuery, query, &AppState::pendingQueryChanged);
}

void AppState::submitQuery(const QString &text, const QList<IndexedFile> &files)
{
    const QString query = text.trimmed();
    if (query.isEmpty())
        return;
    const ChatCommands::Earlier earlier{m_lastResults, m_selectedResult};
    m_latestAction = ChatCommands::detectAction(query, earlier);
    appendMessage(newMessage(query, true));
    if (m_latestAction) {
        handleAction(*m_latestAction);
        return;
    }
    addRecentSearch(query);
    publish(m_isSearching, true, &AppState::isSearchingChanged);
    answer(query, files);
}

void AppState::generatePreviewInsights(const IndexedFile &file)
{
    publish(m_isGeneratingInsights, true, &AppState::isGeneratingInsightsChanged);
    const std::optional<DocumentInsightsResult> none;
    publish(m_previewInsights, none, &AppState::previewInsightsChanged);
    makePreviewInsights(file);
}

void AppState::clearChat()
{
    m_messages.clear();
    Q_EMIT messagesChanged();
    m_selectedResult.reset();
    Q_EMIT selectedResultChanged();
    m_lastResults.clear();
    Q_EMIT lastResultsChanged();
    m_lastCrossAppResults.clear();
    Q_EMIT lastCrossAppResultsChanged();
    m_previewInsights.reset();
    Q_EMIT previewInsightsChanged();
}

QCoro::Task<void> AppState::readModelStatus()
{
    const QPointer<AppState> self(this);
    if (m_platform.languageModel)
        co_await m_platform.languageModel->firstAnswer();
    if (!self)
        co_return;
    publish(m_aiStatusLabel, m_services.llm->statusLabel(), &AppState::aiStatusLabelChanged);
    answerAtStart();
}

QCoro::Task<void> AppState::requestAccess()
{
    const QPointer<AppState> self(this);
    co_await m_services.calendar->requestAccess(Asking::once);
    if (!self)
        co_return;
    co_await m_services.contacts->requestAccess(Asking::once);
    if (!self)
        co_return;
    publish(m_calendarEnabled, m_services.calendar->hasAccess(), &AppState::calendarEnabledChanged);
    publish(m_contactsEnabled, m_services.contacts->hasAccess(), &AppState::contactsEnabledChanged);
    answerAtStart();
}

QCoro::Task<void> AppState::requestAccessAgain(PersonalData data)
{
    const QPointer<AppState> self(this);
    if (data == PersonalData::calendar)
        co_await m_services.calendar->requestAccess(Asking::again);
    else
        co_await m_services.contacts->requestAccess(Asking::again);
    if (!self)
        co_return;
    publish(m_calendarEnabled, m_services.calendar->hasAccess(), &AppState::calendarEnabledChanged);
    publish(m_contactsEnabled, m_services.contacts->hasAccess(), &AppState::contactsEnabledChanged);
}

void AppState::answerAtStart()
{
    if (--m_unansweredAtStart == 0)
        Q_EMIT started();
}

QCoro::Task<void> AppState::answer(QString query, QList<IndexedFile> files)
{
    const QPointer<AppState> self(this);
    const std::optional<ParsedSearchIntent> intent = co_await m_services.llm->parseQuery(query);
    if (!self)
        co_return;
    const QStringList people = intent ? intent->personNames : QStringList();
    const QFuture<QStringList> emails = m_crossApp.emailsOf(people, access());
    // Both run up to their first wait here, and side by side from there on.
    QCoro::Task<QList<SearchResult>> fileSearch = performFileSearch(query, intent, emails, files);
    QCoro::Task<QList<CrossAppResult>> crossAppSearch =
        m_crossApp.performCrossAppSearch(query, intent, emails, access());
    const QList<SearchResult> results = co_await fileSearch;
    const QList<CrossAppResult> crossAppResults = co_await crossAppSearch;
    if (!self)
        co_return;
    const QList<SearchResult> ranked = co_await m_services.llm->rerankResults(query, results);
    if (!self)
        co_return;
    const QString text = co_await m_services.llm->generateResponse(query, ranked, crossAppResults);
    if (!self)
        co_return;

    m_lastResults = ranked;
    Q_EMIT lastResultsChanged();
    m_lastCrossAppResults = crossAppResults;
    Q_EMIT lastCrossAppResultsChanged();
    ChatMessage message = newMessage(text, false);
    message.results = ranked;
    message.crossAppResults = crossAppResults;
    appendMessage(message);
    publish(m_isSearching, false, &AppState::isSearchingChanged);
    Q_EMIT answered();
}

QCoro::Task<QList<SearchResult>>
AppState::performFileSearch(QString query,
                            std::optional<ParsedSearchIntent> intent,
                            QFuture<QStringList> emails,
                            QList<IndexedFile> files)
{
    const QPointer<AppState> self(this);
    QList<SearchResult> results;
    if (intent && !intent->personNames.isEmpty()) {
        // What calendar and contacts know about the people whom the request names.
        if (!intent->dateRange) {
            const QFuture<std::optional<DateIntentParser::DateRange>> finding =
                m_crossApp.findDateAnchor(intent->personNames.first(), access());
            intent->dateRange = co_await finding;
        }
        const QStringList addresses = co_await emails;
        if (!self)
            co_return results;
        intent->keywords.append(domainsOf(addresses));
    }
    const QFuture<QList<SearchResult>> indexSearch = search(query, intent, files);
    results = co_await indexSearch;
    if (!self)
        co_return results;
    const QList<SpotlightSearchHit> hits = co_await m_services.spotlight.searchSpotlight(query);
    if (!self)
        co_return results;
    const QList<IndexedFile> beyond = filesBeyond(results, hits, m_platform.clock.now());
    if (!beyond.isEmpty()) {
        const QFuture<QList<SearchResult>> scoring = search(query, intent, beyond);
        const QList<SearchResult> scored = co_await scoring;
        if (scored.isEmpty())
            results.append(unscoredResults(beyond));
        else
            results.append(scored);
    }
    const QList<SearchResult> kept = bestResults(results);
    co_return kept;
}

void AppState::handleAction(const ChatAction &action)
{
    if (action.kind == ChatAction::Kind::openFile) {
        if (m_platform.workspace)
            m_platform.workspace->open(action.target.file->path);
        appendMessage(newMessage(ChatCommands::openingText(action.target.file->name), false));
        Q_EMIT answered();
        return;
    }
    publish(m_isSearching, true, &AppState::isSearchingChanged);
    setSelectedResult(action.target);
    answerWithInsights(action.target.file);
}

QCoro::Task<void> AppState::answerWithInsights(IndexedFile file)
{
    const QPointer<AppState> self(this);
    const std::optional<DocumentInsightsResult> found = co_await insights(file);
    if (!self)
        co_return;
    if (found) {
        ChatMessage message = newMessage(ChatCommands::insightsText(file->name, *found), false);
        message.insights = found;
        appendMessage(message);
        publish(m_previewInsights, found, &AppState::previewInsightsChanged);
    } else {
        appendMessage(newMessage(ChatCommands::noInsightsText(file->name), false));
    }
    publish(m_isSearching, false, &AppState::isSearchingChanged);
    Q_EMIT answered();
}

QCoro::Task<void> AppState::makePreviewInsights(IndexedFile file)
{
    const QPointer<AppState> self(this);
    const std::optional<DocumentInsightsResult> found = co_await insights(file);
    if (!self)
        co_return;
    publish(m_previewInsights, found, &AppState::previewInsightsChanged);
    publish(m_isGeneratingInsights, false, &AppState::isGeneratingInsightsChanged);
}

/// What the language model says of a file; absent when it has no text or the model nothing to say.
QCoro::Task<std::optional<DocumentInsightsResult>> AppState::insights(IndexedFile file)
{
    const QPointer<AppState> self(this);
    const FilePreviewService preview = m_services.preview;
    const std::stop_token stop = m_stop.get_token();
    const QFuture<std::optional<QString>> reading =
        QtConcurrent::run(&m_workers, [preview, file, stop] {
            return preview.extractPreviewText(file, kMostInsightsText, stop);
        });
    const std::optional<QString> text = co_await reading;
    if (!self || !text)
        co_return std::nullopt;
    const std::optional<DocumentInsightsResult> found =
        co_await m_services.llm->generateInsights(*text, file->name);
    co_return found;
}

void AppState::addRecentSearch(const QString &query)
{
    QStringList searches = m_recentSearches;
    searches.removeAll(query);
    searches.prepend(query);
    searches.resize(std::min(searches.size(), kMostRecentSearches));
    publish(m_recentSearches, searches, &AppState::recentSearchesChanged);
    m_platform.userDefaults.setStringList(kRecentSearchesKey, searches);
}

/// What may be read now of the person's other programs.
CrossAppSearch::Access AppState::access() const
{
    return {
        .calendar = m_calendarEnabled,
        .contacts = m_contactsEnabled,
        .messages = m_messagesAccessible,
    };
}

QFuture<QList<SearchResult>> AppState::search(const QString &query,
                                              const std::optional<ParsedSearchIntent> &intent,
                                              const QList<IndexedFile> &files)
{
    // The service outlives the workers, which the destructor waits for.
    return QtConcurrent::run(
        &m_workers, &FileSearchService::search, m_services.search.get(), query, intent, files);
}

void AppState::appendMessage(const ChatMessage &message)
{
    m_messages.append(message);
    Q_EMIT messagesChanged();
}

/// One made now, with nothing but its text.
ChatMessage AppState::newMessage(const QString &content, bool isUser) const
{
    return {
        .id = QUuid::createUuid(),
        .content = content,
        .isUser = isUser,
        .timestamp = m_platform.clock.now(),
        .results = {},
        .crossAppResults = {},
        .insights = std::nullopt,
    };
}

template <typename T>
void AppState::publish(T &field, const T &value, void (AppState::*changed)())
{
    if (field == value)
        return;
    field = value;
    Q_EMIT(this->*changed)();
}

} // namespace dugwise
