// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoroTask>
#include <QString>

#include <optional>

namespace dugwise {

/// Lets the person choose a folder.
class FolderPicker
{
public:
    FolderPicker() = default;
    Q_DISABLE_COPY_MOVE(FolderPicker)
    virtual ~FolderPicker() = default;

    /// The chosen folder; absent when the person cancelled.
    [[nodiscard]] virtual QCoro::Task<std::optional<QString>> pickFolder(QString message,
                                                                         QString confirmLabel) = 0;
};

} // namespace dugwise
