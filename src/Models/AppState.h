// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/AppServices.h"
#include "Models/CrossAppSearch.h"
#include "Models/Records/ChatAction.h"
#include "Models/Records/ChatMessage.h"
#include "Models/Records/SidebarItem.h"
#include "Platform/AccessPrompt.h"

#include <QCoroTask>
#include <QFuture>
#include <QLatin1StringView>
#include <QObject>
#include <QThreadPool>

#include <optional>
#include <stop_token>

namespace dugwise {

/// Holds the conversation and drives every request from the typed text to the answer. Lives on the
/// UI thread, where all of its state changes; files are scored in its own workers.
class AppState : public QObject
{
    Q_OBJECT

public:
    static constexpr QLatin1StringView kRecentSearchesKey{"RecentSearches"};

    /// Reads the recent searches and the services' state, and starts asking whether there is a
    /// language model, and for access to calendar and contacts. `platform` outlives the object.
    AppState(Platform &platform, AppServices services, QObject *parent = nullptr);
    Q_DISABLE_COPY_MOVE(AppState)
    ~AppState() override;

    // Published state; each has its signal below.
    [[nodiscard]] SidebarItem selectedSidebarItem() const { return m_selectedSidebarItem; }
    /// The conversation, oldest first.
    [[nodiscard]] const QList<ChatMessage> &messages() const { return m_messages; }
    [[nodiscard]] std::optional<SearchResult> selectedResult() const { return m_selectedResult; }
    /// Newest first, at most ten.
    [[nodiscard]] QStringList recentSearches() const { return m_recentSearches; }
    [[nodiscard]] bool isSearching() const { return m_isSearching; }
    /// A request handed over by another view, to be submitted by the chat view.
    [[nodiscard]] std::optional<QString> pendingQuery() const { return m_pendingQuery; }
    [[nodiscard]] QString aiStatusLabel() const { return m_aiStatusLabel; }
    [[nodiscard]] QList<SearchResult> lastResults() const { return m_lastResults; }
    [[nodiscard]] QList<CrossAppResult> lastCrossAppResults() const
    {
        return m_lastCrossAppResults;
    }
    [[nodiscard]] std::optional<DocumentInsightsResult> previewInsights() const
    {
        return m_previewInsights;
    }
    [[nodiscard]] bool isGeneratingInsights() const { return m_isGeneratingInsights; }
    [[nodiscard]] bool calendarEnabled() const { return m_calendarEnabled; }
    [[nodiscard]] bool contactsEnabled() const { return m_contactsEnabled; }
    [[nodiscard]] bool messagesAccessible() const { return m_messagesAccessible; }

    /// Whether the language model can be used now; asked anew at each call.
    [[nodiscard]] bool isAIAvailable() const;
    /// Whether all that the start-up asks is answered; started() tells when.
    [[nodiscard]] bool isStarted() const { return m_unansweredAtStart == 0; }
    /// The command that the latest request was; none when it was a search.
    [[nodiscard]] std::optional<ChatAction> latestAction() const { return m_latestAction; }

    void setSelectedSidebarItem(SidebarItem item);
    void setSelectedResult(const std::optional<SearchResult> &result);
    void setPendingQuery(const std::optional<QString> &query);

    /// Takes a request in; its answer comes later as a new message. A request of white space alone
    /// is ignored. A request that is a command on earlier results is carried out instead.
    void submitQuery(const QString &text, const QList<IndexedFile> &files);
    /// Has previewInsights() made for a file, without a message.
    void generatePreviewInsights(const IndexedFile &file);
    /// Asks the person for access once more, whatever they said before; calendarEnabled() or
    /// contactsEnabled() then tells the answer.
    [[nodiscard]] QCoro::Task<void> requestAccessAgain(PersonalData data);
    /// Starts a new conversation; the recent searches stay.
    void clearChat();

Q_SIGNALS:
    void selectedSidebarItemChanged();
    void messagesChanged();
    void selectedResultChanged();
    void recentSearchesChanged();
    void isSearchingChanged();
    void pendingQueryChanged();
    void aiStatusLabelChanged();
    void lastResultsChanged();
    void lastCrossAppResultsChanged();
    void previewInsightsChanged();
    void isGeneratingInsightsChanged();
    void calendarEnabledChanged();
    void contactsEnabledChanged();
    void messagesAccessibleChanged();
    void started();
    /// One request has its answer, the last of messages().
    void answered();

private:
    QCoro::Task<void> readModelStatus();
    QCoro::Task<void> requestAccess();
    void answerAtStart();
    QCoro::Task<void> answer(QString query, QList<IndexedFile> files);
    QCoro::Task<QList<SearchResult>> performFileSearch(QString query,
                                                       std::optional<ParsedSearchIntent> intent,
                                                       QFuture<QStringList> emails,
                                                       QList<IndexedFile> files);

    void handleAction(const ChatAction &action);
    QCoro::Task<void> answerWithInsights(IndexedFile file);
    QCoro::Task<void> makePreviewInsights(IndexedFile file);
    QCoro::Task<std::optional<DocumentInsightsResult>> insights(IndexedFile file);

    void addRecentSearch(const QString &query);
    [[nodiscard]] CrossAppSearch::Access access() const;
    [[nodiscard]] QFuture<QList<SearchResult>>
    search(const QString &query,
           const std::optional<ParsedSearchIntent> &intent,
           const QList<IndexedFile> &files);
    void appendMessage(const ChatMessage &message);
    [[nodiscard]] ChatMessage newMessage(const QString &content, bool isUser) const;

    /// Sets one published field and announces the change.
    template <typename T>
    void publish(T &field, const T &value, void (AppState::*changed)());

    Platform &m_platform;
    AppServices m_services;
    CrossAppSearch m_crossApp;
    QThreadPool m_workers;
    SidebarItem m_selectedSidebarItem = SidebarItem::home;
    QList<ChatMessage> m_messages;
    std::optional<SearchResult> m_selectedResult;
    QStringList m_recentSearches;
    bool m_isSearching = false;
    std::optional<QString> m_pendingQuery;
    QString m_aiStatusLabel;
    QList<SearchResult> m_lastResults;
    QList<CrossAppResult> m_lastCrossAppResults;
    std::optional<DocumentInsightsResult> m_previewInsights;
    bool m_isGeneratingInsights = false;
    bool m_calendarEnabled = false;
    bool m_contactsEnabled = false;
    bool m_messagesAccessible = false;
    int m_unansweredAtStart = 2; ///< the model's status, and access
    std::optional<ChatAction> m_latestAction;
    std::stop_source m_stop; ///< of what the workers read
};

} // namespace dugwise
