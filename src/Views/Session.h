// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/AppState.h"
#include "Models/ConversationModel.h"
#include "Services/FileIndexer.h"
#include "Services/NetworkMonitor.h"
#include "Views/DialogFolderPicker.h"
#include "Views/FilePreview.h"
#include "Views/FolderModel.h"
#include "Views/SettingsModel.h"
#include "Views/SheetAccessPrompt.h"
#include "Views/SystemAppearance.h"

#include <QObject>
#include <QtQmlIntegration>

namespace dugwise {

/// What the views see of the application: its long-lived objects, and what a click or a key asks
/// of them. Lives on the UI thread.
class Session : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes the one session.")
    Q_PROPERTY(dugwise::FileIndexer *indexer READ indexer CONSTANT)
    Q_PROPERTY(dugwise::NetworkMonitor *network READ network CONSTANT)
    Q_PROPERTY(dugwise::ConversationModel *conversation READ conversation CONSTANT)
    Q_PROPERTY(dugwise::FolderModel *folders READ folders CONSTANT)
    Q_PROPERTY(dugwise::FilePreview *preview READ preview CONSTANT)
    Q_PROPERTY(dugwise::SystemAppearance *appearance READ appearance CONSTANT)
    Q_PROPERTY(dugwise::SettingsModel *settings READ settings CONSTANT)
    Q_PROPERTY(dugwise::DialogFolderPicker *folderPicker READ folderPicker CONSTANT)
    Q_PROPERTY(dugwise::SheetAccessPrompt *accessPrompt READ accessPrompt CONSTANT)
    Q_PROPERTY(int page READ page WRITE setPage NOTIFY pageChanged)
    Q_PROPERTY(QStringList recentLabels READ recentLabels NOTIFY recentSearchesChanged)
    Q_PROPERTY(bool isSearching READ isSearching NOTIFY isSearchingChanged)
    Q_PROPERTY(QString pendingQuery READ pendingQuery NOTIFY pendingQueryChanged)
    Q_PROPERTY(QString waitingRequest READ waitingRequest NOTIFY waitingRequestChanged)
    Q_PROPERTY(bool isModelAvailable READ isModelAvailable NOTIFY isModelAvailableChanged)
    Q_PROPERTY(bool calendarEnabled READ calendarEnabled NOTIFY sourcesChanged)
    Q_PROPERTY(bool contactsEnabled READ contactsEnabled NOTIFY sourcesChanged)
    Q_PROPERTY(bool messagesAccessible READ messagesAccessible NOTIFY sourcesChanged)
    Q_PROPERTY(qsizetype folderCount READ folderCount NOTIFY foldersChanged)

public:
    static constexpr QLatin1StringView kColumnsKey{"WindowColumns"};
    static constexpr QLatin1StringView kWindowSizeKey{"WindowSize"};

    /// All outlive the session.
    Session(Platform &platform,
            AppState &appState,
            FileIndexer &indexer,
            NetworkMonitor &network,
            QObject *parent = nullptr);

    [[nodiscard]] FileIndexer *indexer() const { return &m_indexer; }
    [[nodiscard]] NetworkMonitor *network() const { return &m_network; }
    [[nodiscard]] ConversationModel *conversation() { return &m_conversation; }
    [[nodiscard]] FolderModel *folders() { return &m_folders; }
    [[nodiscard]] FilePreview *preview() { return &m_preview; }
    [[nodiscard]] SystemAppearance *appearance() { return &m_appearance; }
    [[nodiscard]] SettingsModel *settings() { return &m_settings; }
    /// Null when folders are not chosen in the window.
    [[nodiscard]] DialogFolderPicker *folderPicker() const;
    /// Null when access is not asked for in the window.
    [[nodiscard]] SheetAccessPrompt *accessPrompt() const;
    /// The sidebar's destination, as the position of its SidebarItem.
    [[nodiscard]] int page() const;
    void setPage(int page);
    /// The latest recent searches, each no longer than a line can be.
    [[nodiscard]] QStringList recentLabels() const;
    [[nodiscard]] bool isSearching() const { return m_appState.isSearching(); }
    /// Empty when there is none.
    [[nodiscard]] QString pendingQuery() const;
    /// The latest of those that are to be asked once there is an index; empty when there is none.
    [[nodiscard]] QString waitingRequest() const
    {
        return m_waitingRequests.value(m_waitingRequests.size() - 1);
    }
    /// As of the last look; the window looks again while it is seen.
    [[nodiscard]] bool isModelAvailable() const { return m_isModelAvailable; }
    [[nodiscard]] bool calendarEnabled() const { return m_appState.calendarEnabled(); }
    [[nodiscard]] bool contactsEnabled() const { return m_appState.contactsEnabled(); }
    [[nodiscard]] bool messagesAccessible() const { return m_appState.messagesAccessible(); }
    [[nodiscard]] qsizetype folderCount() const { return m_indexer.indexedFolderURLs().size(); }

    /// Takes a request in, and tells whether there was one in the text.
    Q_INVOKABLE bool submit(const QString &text);
    /// Takes in a request from outside the window, and shows the conversation. Until the index is
    /// restored it waits, and where there was none, until folders are walked for the first time.
    /// One of white space alone is ignored.
    void ask(const QString &request);
    Q_INVOKABLE void newChat();
    /// Has the recent search at that place of recentLabels() submitted by the chat view.
    Q_INVOKABLE void searchAgain(int position);
    Q_INVOKABLE void clearPendingQuery();
    /// Selects the result of a row of the conversation.
    Q_INVOKABLE void select(int row);
    /// Selects a result of the last answer by its number, counted from 1.
    Q_INVOKABLE void selectNumber(int number);
    Q_INVOKABLE void openFile(int row);
    Q_INVOKABLE void revealFile(int row);
    Q_INVOKABLE void addFolder();
    /// Removes the folder at that place of folders().
    Q_INVOKABLE void removeFolder(int position);
    Q_INVOKABLE void lookForModel();
    /// The columns' widths as a SplitView saves them; empty before they were ever changed.
    [[nodiscard]] Q_INVOKABLE QByteArray columns() const;
    Q_INVOKABLE void setColumns(const QByteArray &columns);
    /// The window's size when it was last closed; the usual one before that.
    [[nodiscard]] Q_INVOKABLE QSize windowSize() const;
    Q_INVOKABLE void setWindowSize(const QSize &size);

Q_SIGNALS:
    void pageChanged();
    void recentSearchesChanged();
    void isSearchingChanged();
    void pendingQueryChanged();
    void waitingRequestChanged();
    void isModelAvailableChanged();
    void sourcesChanged();
    void foldersChanged();
    /// An answer has come; without marks of bold type.
    void answered(const QString &answer);

private:
    void askWaiting();

    Platform &m_platform;
    AppState &m_appState;
    FileIndexer &m_indexer;
    NetworkMonitor &m_network;
    ConversationModel m_conversation;
    FolderModel m_folders;
    FilePreview m_preview;
    SystemAppearance m_appearance;
    SettingsModel m_settings;
    bool m_isModelAvailable = false;
    bool m_hasIndex = false;       ///< of earlier runs
    bool m_hasStarted = false;     ///< so that requests can be answered
    QStringList m_waitingRequests; ///< asked for before that
};

} // namespace dugwise
