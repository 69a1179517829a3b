// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace dugwise {

class FileIndexer;

/// Draws the progress of walks on standard error, where that is a terminal, and leaves no trace.
class ProgressBar : public QObject
{
    Q_OBJECT

public:
    explicit ProgressBar(const FileIndexer &indexer);
    Q_DISABLE_COPY_MOVE(ProgressBar)
    ~ProgressBar() override;

private:
    void draw();
    void wipe();

    const FileIndexer &m_indexer;
    int m_drawnPercent = -1; ///< none is on the screen
};

} // namespace dugwise
