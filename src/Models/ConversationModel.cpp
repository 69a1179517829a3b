// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/ConversationModel.h"

#include "Models/BoldText.h"
#include "Utilities/FileTypeHelper.h"
#include "Utilities/Formatters.h"
#include "Utilities/PrintableText.h"

#include <algorithm>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr qsizetype kRowsAFrame = 2;
constexpr std::chrono::milliseconds kFrame(16);

} // namespace

ConversationModel::ConversationModel(const AppState &appState, Clock clock, QObject *parent)
    : QAbstractListModel(parent)
    , m_appState(appState)
    , m_clock(clock)
{
    m_frames.callOnTimeout(this, [this] { showRows(kRowsAFrame); });
    connect(&appState, &AppState::messagesChanged, this, &ConversationModel::takeMessages);
    connect(&appState, &AppState::isSearchingChanged, this, &ConversationModel::takeSearching);
    connect(&appState, &AppState::selectedResultChanged, this, &ConversationModel::takeSelection);
    takeMessages();
    takeSearching();
    takeSelection();
}

int ConversationModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant ConversationModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row &row = m_rows[index.row()];
    if (role == kindRole)
        return QVariant::fromValue(row.kind);
    switch (row.kind) {
    case Kind::Request:
    case Kind::Answer:
        return bubbleData(row, role);
    case Kind::Result:
        return resultData(row, role);
    case Kind::CrossAppResult:
        return crossAppData(row, role);
    case Kind::Searching:
        break;
    }
    return {};
}

QHash<int, QByteArray> ConversationModel::roleNames() const
{
    return {
        {kindRole, "kind"},
        {textRole, "text"},
        {richTextRole, "richText"},
        {isFirstRole, "isFirst"},
        {isLastRole, "isLast"},
        {numberRole, "number"},
        {isSelectedRole, "isSelected"},
        {nameRole, "name"},
        {symbolRole, "symbol"},
        {colorNameRole, "colorName"},
        {typeNameRole, "typeName"},
        {isSemanticRole, "isSemantic"},
        {dateRole, "date"},
        {sizeRole, "size"},
        {folderRole, "folder"},
        {hostRole, "host"},
        {summaryRole, "summary"},
    };
}

std::optional<SearchResult> ConversationModel::result(int row) const
{
    const SearchResult *const found = resultAt(row);
    return found ? std::optional(*found) : std::nullopt;
}

int ConversationModel::nextResult(int row, int by) const
{
    for (int next = row + by; next >= 0 && next < m_rows.size(); next += by) {
        if (m_rows[next].kind == Kind::Result)
            return next;
    }
    return -1;
}

/// Null for a row of another kind.
const SearchResult *ConversationModel::resultAt(int row) const
{
    if (row < 0 || row >= m_rows.size() || m_rows[row].kind != Kind::Result)
        return nullptr;
    return &m_messages[m_rows[row].message].results[m_rows[row].position];
}

QList<ConversationModel::Row> ConversationModel::rowsOf(const ChatMessage &message,
                                                        qsizetype position) const
{
    QList<Row> rows;
    const QList<TextPart> parts = textParts(message.content);
    for (qsizetype i = 0; i < parts.size(); ++i)
        rows.append({.kind = message.isUser ? Kind::Request : Kind::Answer,
                     .message = position,
                     .position = i,
                     .part = parts[i],
                     .isLast = i == parts.size() - 1});
    for (qsizetype i = 0; i < message.results.size(); ++i)
        rows.append({.kind = Kind::Result, .message = position, .position = i});
    for (qsizetype i = 0; i < message.crossAppResults.size(); ++i)
        rows.append({.kind = Kind::CrossAppResult, .message = position, .position = i});
    return rows;
}

/// The conversation is only ever appended to, or cleared.
void ConversationModel::takeMessages()
{
    const QList<ChatMessage> messages = m_appState.messages();
    if (messages.size() < m_messages.size()) {
        beginResetModel();
        m_messages.clear();
        m_rows.removeIf([](const Row &row) { return row.kind != Kind::Searching; });
        m_coming.clear();
        endResetModel();
        Q_EMIT isEmptyChanged();
    }
    showRows(m_coming.size());
    const QList<ChatMessage> before = std::exchange(m_messages, messages);
    for (qsizetype i = before.size(); i < messages.size(); ++i)
        m_coming.append(rowsOf(messages[i], i));
    showRows(kRowsAFrame);
    if (before.isEmpty() && !messages.isEmpty())
        Q_EMIT isEmptyChanged();
}

/// Moves up to `count` of the rows that are coming to those that are there.
void ConversationModel::showRows(qsizetype count)
{
    const QList<Row> rows = m_coming.first(std::min(count, m_coming.size()));
    m_coming.remove(0, rows.size());
    if (m_coming.isEmpty())
        m_frames.stop();
    else if (!m_frames.isActive())
        m_frames.start(kFrame);
    if (rows.isEmpty())
        return;
    const bool isSearching = !m_rows.isEmpty() && m_rows.last().kind == Kind::Searching;
    const qsizetype at = m_rows.size() - (isSearching ? 1 : 0);
    beginInsertRows({}, static_cast<int>(at), static_cast<int>(at + rows.size() - 1));
    for (qsizetype i = 0; i < rows.size(); ++i)
        m_rows.insert(at + i, rows[i]);
    endInsertRows();
}

void ConversationModel::takeSearching()
{
    const bool isShown = !m_rows.isEmpty() && m_rows.last().kind == Kind::Searching;
    if (isShown == m_appState.isSearching())
        return;
    const auto last = static_cast<int>(m_rows.size());
    if (isShown) {
        beginRemoveRows({}, last - 1, last - 1);
        m_rows.removeLast();
        endRemoveRows();
    } else {
        beginInsertRows({}, last, last);
        m_rows.append({.kind = Kind::Searching});
        endInsertRows();
    }
}

/// A result may stand in several answers.
void ConversationModel::takeSelection()
{
    const std::optional<SearchResult> selected = m_appState.selectedResult();
    const QUuid before = std::exchange(m_selected, selected ? selected->id : QUuid());
    if (before == m_selected)
        return;
    for (int row = 0; row < m_rows.size(); ++row) {
        const SearchResult *const shown = resultAt(row);
        if (shown && (shown->id == before || shown->id == m_selected))
            Q_EMIT dataChanged(index(row), index(row), {isSelectedRole});
    }
}

QVariant ConversationModel::bubbleData(const Row &row, int role) const
{
    const ChatMessage &message = m_messages[row.message];
    const auto text = [&] {
        return printableLines(message.content.sliced(row.part.start, row.part.length));
    };
    switch (role) {
    case textRole:
        return message.isUser ? text() : boldTextToPlain(text());
    case richTextRole:
        return message.isUser ? QString() : boldTextToHtml(text());
    case isFirstRole:
        return row.position == 0;
    case isLastRole:
        return row.isLast;
    default:
        return {};
    }
}

QVariant ConversationModel::resultData(const Row &row, int role) const
{
    const SearchResult &result = m_messages[row.message].results[row.position];
    const IndexedFile &file = result.file;
    switch (role) {
    case isFirstRole:
        return row.position == 0;
    case numberRole:
        return static_cast<int>(row.position + 1);
    case isSelectedRole:
        return result.id == m_selected;
    case nameRole:
        return printable(file->name);
    case symbolRole:
        return FileTypeHelper::sfSymbol(file->fileExtension);
    case colorNameRole:
        return FileTypeHelper::iconColor(file->fileExtension);
    case typeNameRole:
        return displayName(FileTypeHelper::fileType(file->fileExtension));
    case isSemanticRole:
        return result.matchReasons.contains(SearchResult::MatchReason::semantic);
    case dateRole:
        return relativeTime(file->modifiedDate, m_clock.now(), UnitStyle::abbreviated);
    case sizeRole:
        return byteCount(file->size);
    case folderRole:
        return printable(file->folderPath);
    case hostRole:
        return hostOf(file->downloadSource.value_or(QString()));
    case summaryRole:
        return printable(result.summary);
    default:
        return {};
    }
}

QVariant ConversationModel::crossAppData(const Row &row, int role) const
{
    const CrossAppResult &result = m_messages[row.message].crossAppResults[row.position];
    switch (role) {
    case isFirstRole:
        return row.position == 0;
    case nameRole:
        return printableBeginning(result.title);
    case symbolRole:
        return iconName(result.source);
    case colorNameRole:
        return tint(result.source);
    case typeNameRole:
        return rawValue(result.source);
    case dateRole:
        return relativeTime(result.date, m_clock.now(), UnitStyle::abbreviated);
    case folderRole:
        return printableBeginning(result.subtitle);
    case summaryRole:
        return printableBeginning(result.snippet);
    default:
        return {};
    }
}

} // namespace dugwise
