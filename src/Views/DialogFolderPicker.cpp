// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/DialogFolderPicker.h"

#include <QCoroFuture>

namespace dugwise {

DialogFolderPicker::~DialogFolderPicker()
{
    conclude({});
}

QCoro::Task<std::optional<QString>> DialogFolderPicker::pickFolder(QString message,
                                                                   QString confirmLabel)
{
    if (m_choice)
        co_return std::nullopt;
    m_choice = std::make_unique<QPromise<std::optional<QString>>>();
    m_choice->start();
    const QFuture<std::optional<QString>> choice = m_choice->future();
    Q_EMIT asked(message, confirmLabel);
    const std::optional<QString> folder = co_await choice;
    co_return folder;
}

void DialogFolderPicker::conclude(const QUrl &folder)
{
    if (!m_choice)
        return;
    std::optional<QString> path;
    if (folder.isLocalFile())
        path = folder.toLocalFile();
    const auto choice = std::move(m_choice);
    choice->addResult(path);
    choice->finish();
}

} // namespace dugwise
