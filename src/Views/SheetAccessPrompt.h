// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/AccessQuestion.h"

#include <QFuture>
#include <QObject>
#include <QPromise>
#include <QtQmlIntegration>

#include <memory>

namespace dugwise {

/// Has the window ask in a sheet. One question is open at a time: who asks while one is gets no
/// answer. Lives on the UI thread.
class SheetAccessPrompt : public QObject, public AccessPrompt
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The session has it.")
    Q_PROPERTY(bool isAsking READ isAsking NOTIFY questionChanged)
    Q_PROPERTY(QString title READ title NOTIFY questionChanged)
    Q_PROPERTY(QString whatIsRead READ whatIsRead NOTIFY questionChanged)
    Q_PROPERTY(QString promise READ promise NOTIFY questionChanged)
    Q_PROPERTY(QString symbol READ symbol NOTIFY questionChanged)

public:
    SheetAccessPrompt() = default;
    Q_DISABLE_COPY_MOVE(SheetAccessPrompt)
    ~SheetAccessPrompt() override;

    [[nodiscard]] QCoro::Task<std::optional<bool>> ask(PersonalData data) override;

    [[nodiscard]] bool isAsking() const { return m_answer != nullptr; }
    // The question that is open, or was last.
    [[nodiscard]] QString title() const { return accessQuestion(m_data).title; }
    [[nodiscard]] QString whatIsRead() const { return accessQuestion(m_data).whatIsRead; }
    [[nodiscard]] QString promise() const { return accessQuestion(m_data).promise; }
    [[nodiscard]] QString symbol() const;

    /// Ends the question, if one is open.
    Q_INVOKABLE void answer(bool isGranted);
    /// Ends it without an answer.
    Q_INVOKABLE void dismiss();

Q_SIGNALS:
    void questionChanged();

private:
    using Answer = std::optional<bool>;

    void conclude(Answer answer);

    PersonalData m_data = PersonalData::calendar;
    std::unique_ptr<QPromise<Answer>> m_answer; ///< to the open question
};

} // namespace dugwise
