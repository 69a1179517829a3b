// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/AppState.h"
#include "Models/TextParts.h"
#include "Utilities/Clock.h"

#include <QAbstractListModel>
#include <QTimer>

namespace dugwise {

/// The conversation as rows of a list: a bubble a message, or several a long one, a card a result
/// below it, and at its end the sign of a search under way. Rows of bounded size keep the list
/// lazy, whatever an answer holds. The latest rows come a few a frame, since making what shows a
/// row takes milliseconds.
class ConversationModel : public QAbstractListModel
{
    Q_OBJECT

    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY isEmptyChanged)

public:
    // NOLINTBEGIN(readability-identifier-naming): QML knows enumerators in upper case alone
    enum class Kind {
        Request,
        Answer,
        Result,
        CrossAppResult,
        Searching,
    };
    // NOLINTEND(readability-identifier-naming)
    Q_ENUM(Kind)

    enum Role {
        kindRole = Qt::UserRole,
        textRole,       ///< of a bubble: without marks of bold type when it is an answer
        richTextRole,   ///< of an answer: HTML with nothing in it but bold type and line breaks
        isFirstRole,    ///< of a bubble: begins a message; of a card: is the first of its kind
        isLastRole,     ///< of a bubble: ends a message
        numberRole,     ///< of a result: counted from 1
        isSelectedRole, ///< of a result
        nameRole,       ///< of a result; the title of a cross-app result
        symbolRole,     ///< name of the system symbol that stands for the row
        colorNameRole,  ///< name of the colour in which it is drawn
        typeNameRole,   ///< of a result; the source of a cross-app result
        isSemanticRole, ///< of a result: found by its meaning
        dateRole,       ///< of a card: relative, in short units
        sizeRole,       ///< of a result
        folderRole,     ///< of a result; the subtitle of a cross-app result
        hostRole,       ///< of a result: where it was downloaded from; may be empty
        summaryRole,    ///< of a result; the snippet of a cross-app result
    };

    /// `appState` outlives the model.
    ConversationModel(const AppState &appState, Clock clock, QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Whether there is no message.
    [[nodiscard]] bool isEmpty() const { return m_messages.isEmpty(); }

    /// The result of a row; none for a row of another kind.
    [[nodiscard]] std::optional<SearchResult> result(int row) const;

    /// The nearest row of a result after a row, or before it when `by` is -1; -1 when there is
    /// none.
    Q_INVOKABLE [[nodiscard]] int nextResult(int row, int by) const;

Q_SIGNALS:
    void isEmptyChanged();

private:
    struct Row
    {
        Kind kind = Kind::Request;
        qsizetype message = 0;
        qsizetype position = 0; ///< among the message's parts, results or cross-app results
        TextPart part;          ///< of a bubble
        bool isLast = false;    ///< of a bubble
    };

    [[nodiscard]] QList<Row> rowsOf(const ChatMessage &message, qsizetype position) const;
    [[nodiscard]] const SearchResult *resultAt(int row) const;
    void takeMessages();
    void showRows(qsizetype count);
    void takeSearching();
    void takeSelection();
    [[nodiscard]] QVariant bubbleData(const Row &row, int role) const;
    [[nodiscard]] QVariant resultData(const Row &row, int role) const;
    [[nodiscard]] QVariant crossAppData(const Row &row, int role) const;

    const AppState &m_appState;
    Clock m_clock;
    QList<ChatMessage> m_messages;
    QList<Row> m_rows;
    QList<Row> m_coming; ///< to stand behind `m_rows`
    QTimer m_frames;     ///< runs while rows are coming
    QUuid m_selected;
};

} // namespace dugwise
