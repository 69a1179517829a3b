// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Session.h"

#include "Models/BoldText.h"
#include "Platform/Platform.h"
#include "Utilities/PrintableText.h"
#include "Views/WindowMessage.h"

#include <algorithm>
#include <utility>

namespace dugwise {

namespace {

constexpr qsizetype kShownRecents = 5;
constexpr qsizetype kLongestLabel = 300; ///< characters; more than any window shows

} // namespace

Session::Session(Platform &platform,
                 AppState &appState,
                 FileIndexer &indexer,
                 NetworkMonitor &network,
                 QObject *parent)
    : QObject(parent)
    , m_platform(platform)
    , m_appState(appState)
    , m_indexer(indexer)
    , m_network(network)
    , m_conversation(appState, platform.clock)
    , m_folders(indexer)
    , m_preview(platform, appState)
    , m_appearance(platform.desktopAppearance.get())
    , m_settings(platform, appState, indexer)
{
    connect(&appState, &AppState::selectedSidebarItemChanged, this, &Session::pageChanged);
    connect(&appState, &AppState::recentSearchesChanged, this, &Session::recentSearchesChanged);
    connect(&appState, &AppState::isSearchingChanged, this, &Session::isSearchingChanged);
    connect(&appState, &AppState::isSearchingChanged, this, &Session::lookForModel);
    connect(&appState, &AppState::aiStatusLabelChanged, this, &Session::lookForModel);
    connect(&appState, &AppState::pendingQueryChanged, this, &Session::pendingQueryChanged);
    connect(&appState, &AppState::calendarEnabledChanged, this, &Session::sourcesChanged);
    connect(&appState, &AppState::contactsEnabledChanged, this, &Session::sourcesChanged);
    connect(&appState, &AppState::messagesAccessibleChanged, this, &Session::sourcesChanged);
    connect(&appState, &AppState::answered, this, [this] {
        Q_EMIT answered(printableLines(boldTextToPlain(m_appState.messages().last().content)));
    });
    connect(&indexer, &FileIndexer::indexedFolderURLsChanged, this, &Session::foldersChanged);
    connect(&appState, &AppState::started, this, &Session::askWaiting);
    connect(&indexer, &FileIndexer::settled, this, &Session::askWaiting);
    connect(&indexer, &FileIndexer::restored, this, [this] {
        m_hasIndex = !m_indexer.indexedFiles().isEmpty();
        askWaiting();
    });
    lookForModel();
}

DialogFolderPicker *Session::folderPicker() const
{
    return dynamic_cast<DialogFolderPicker *>(m_platform.folderPicker.get());
}

SheetAccessPrompt *Session::accessPrompt() const
{
    return dynamic_cast<SheetAccessPrompt *>(m_platform.accessPrompt.get());
}

int Session::page() const
{
    return static_cast<int>(m_appState.selectedSidebarItem());
}

void Session::setPage(int page)
{
    if (page >= 0 && page < static_cast<int>(kAllSidebarItems.size()))
        m_appState.setSelectedSidebarItem(kAllSidebarItems.at(static_cast<std::size_t>(page)));
}

QStringList Session::recentLabels() const
{
    QStringList labels;
    for (const QString &query : m_appState.recentSearches().first(
             std::min(kShownRecents, m_appState.recentSearches().size())))
        labels.append(printable(query.left(kLongestLabel)));
    return labels;
}

QString Session::pendingQuery() const
{
    return m_appState.pendingQuery().value_or(QString());
}

bool Session::submit(const QString &text)
{
    const QString request = text.trimmed();
    if (request.isEmpty())
        return false;
    if (!m_waitingRequests.isEmpty()) { // it stood in the field, and this is what became of it
        m_waitingRequests.removeLast();
        Q_EMIT waitingRequestChanged();
    }
    m_appState.submitQuery(request, m_indexer.indexedFiles());
    return true;
}

void Session::ask(const QString &request)
{
    const QString text = request.trimmed().left(WindowMessage::kLongestRequest);
    if (text.isEmpty())
        return;
    m_appState.setSelectedSidebarItem(SidebarItem::home);
    m_waitingRequests.removeAll(text);
    m_waitingRequests.append(text);
    askWaiting();
    if (!m_hasStarted)
        Q_EMIT waitingRequestChanged();
}

void Session::askWaiting()
{
    m_hasStarted = m_hasStarted || (m_appState.isStarted() && (m_hasIndex || !m_indexer.isBusy()));
    if (!m_hasStarted || m_waitingRequests.isEmpty())
        return;
    const QStringList requests = std::exchange(m_waitingRequests, {});
    Q_EMIT waitingRequestChanged();
    for (const QString &request : requests)
        submit(request);
}

void Session::newChat()
{
    m_appState.clearChat();
}

void Session::searchAgain(int position)
{
    const QString query = m_appState.recentSearches().value(position);
    m_appState.setSelectedSidebarItem(SidebarItem::home);
    m_appState.setPendingQuery(query);
}

void Session::clearPendingQuery()
{
    m_appState.setPendingQuery(std::nullopt);
}

void Session::select(int row)
{
    if (const auto result = m_conversation.result(row))
        m_appState.setSelectedResult(result);
}

void Session::selectNumber(int number)
{
    const QList<SearchResult> results = m_appState.lastResults();
    if (number >= 1 && number <= results.size())
        m_appState.setSelectedResult(results[number - 1]);
}

void Session::openFile(int row)
{
    const auto result = m_conversation.result(row);
    if (result && m_platform.workspace)
        m_platform.workspace->open(result->file->path);
}

void Session::revealFile(int row)
{
    const auto result = m_conversation.result(row);
    if (result && m_platform.workspace)
        m_platform.workspace->showInFileManager(result->file->path);
}

void Session::addFolder()
{
    m_indexer.addFolder();
}

void Session::removeFolder(int position)
{
    const QList<QUrl> folders = m_indexer.indexedFolderURLs();
    if (position >= 0 && position < folders.size())
        m_indexer.removeFolder(folders[position]);
}

void Session::lookForModel()
{
    const bool isAvailable = m_appState.isAIAvailable();
    if (isAvailable == m_isModelAvailable)
        return;
    m_isModelAvailable = isAvailable;
    Q_EMIT isModelAvailableChanged();
}

QByteArray Session::columns() const
{
    return m_platform.userDefaults.byteArrayList(kColumnsKey).value_or(QByteArrayList()).value(0);
}

void Session::setColumns(const QByteArray &columns)
{
    m_platform.userDefaults.setByteArrayList(kColumnsKey, {columns});
}

QSize Session::windowSize() const
{
    const QStringList sides =
        m_platform.userDefaults.stringList(kWindowSizeKey).value_or(QStringList());
    const QSize size(sides.value(0).toInt(), sides.value(1).toInt());
    return size.isEmpty() ? QSize(1200, 750) : size;
}

void Session::setWindowSize(const QSize &size)
{
    if (size != windowSize())
        m_platform.userDefaults.setStringList(
            kWindowSizeKey, {QString::number(size.width()), QString::number(size.height())});
}

} // namespace dugwise
