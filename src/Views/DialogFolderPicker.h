// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FolderPicker.h"

#include <QFuture>
#include <QObject>
#include <QPromise>
#include <QUrl>
#include <QtQmlIntegration>

#include <memory>

namespace dugwise {

/// Has the window show a dialog in which the person chooses a folder. One is open at a time: who
/// asks while it is gets nothing. Lives on the UI thread.
class DialogFolderPicker : public QObject, public FolderPicker
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    DialogFolderPicker() = default;
    Q_DISABLE_COPY_MOVE(DialogFolderPicker)
    ~DialogFolderPicker() override;

    [[nodiscard]] QCoro::Task<std::optional<QString>> pickFolder(QString message,
                                                                 QString confirmLabel) override;

    /// Ends the dialog with a folder, or without one when the address is empty.
    Q_INVOKABLE void conclude(const QUrl &folder);

Q_SIGNALS:
    void asked(const QString &message, const QString &confirmLabel);

private:
    std::unique_ptr<QPromise<std::optional<QString>>> m_choice; ///< of the open dialog
};

} // namespace dugwise
