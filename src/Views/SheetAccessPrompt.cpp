// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SheetAccessPrompt.h"

#include <QCoroFuture>

using namespace Qt::StringLiterals;

namespace dugwise {

SheetAccessPrompt::~SheetAccessPrompt()
{
    dismiss();
}

QCoro::Task<std::optional<bool>> SheetAccessPrompt::ask(PersonalData data)
{
    if (m_answer)
        co_return std::nullopt;
    m_data = data;
    m_answer = std::make_unique<QPromise<Answer>>();
    m_answer->start();
    const QFuture<Answer> answering = m_answer->future();
    Q_EMIT questionChanged();
    const Answer answer = co_await answering;
    co_return answer;
}

QString SheetAccessPrompt::symbol() const
{
    return m_data == PersonalData::calendar ? u"calendar"_s : u"person.crop.circle"_s;
}

void SheetAccessPrompt::answer(bool isGranted)
{
    conclude(isGranted);
}

void SheetAccessPrompt::dismiss()
{
    conclude(std::nullopt);
}

void SheetAccessPrompt::conclude(Answer answer)
{
    if (!m_answer)
        return;
    const auto given = std::move(m_answer);
    Q_EMIT questionChanged();
    given->addResult(answer);
    given->finish();
}

} // namespace dugwise
