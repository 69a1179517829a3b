// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Workspace.h"

#include <QObject>

namespace dugwise {

/// Opens files with xdg-open, and shows them through the file manager's own interface on the
/// session bus (org.freedesktop.FileManager1).
class DesktopWorkspace final : public QObject, public Workspace
{
public:
    void open(const QString &path) override;
    /// Opens the folder instead when no file manager answers.
    void showInFileManager(const QString &path) override;
};

} // namespace dugwise
