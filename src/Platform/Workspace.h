// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace dugwise {

/// The desktop's own ways to show files. Neither waits, and what fails does so in silence.
class Workspace
{
public:
    Workspace() = default;
    Q_DISABLE_COPY_MOVE(Workspace)
    virtual ~Workspace() = default;

    /// Opens a file with the application that the person has chosen for its kind.
    virtual void open(const QString &path) = 0;
    /// Shows a file, selected, in the file manager.
    virtual void showInFileManager(const QString &path) = 0;
};

} // namespace dugwise
