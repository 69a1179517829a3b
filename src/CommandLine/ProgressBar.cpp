// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine/ProgressBar.h"

#include "Services/FileIndexer.h"

#include <unistd.h>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace dugwise {

ProgressBar::ProgressBar(const FileIndexer &indexer)
    : m_indexer(indexer)
{
    if (::isatty(STDERR_FILENO) == 0)
        return;
    connect(&indexer, &FileIndexer::indexingProgressChanged, this, &ProgressBar::draw);
    connect(&indexer, &FileIndexer::isIndexingChanged, this, &ProgressBar::draw);
}

ProgressBar::~ProgressBar()
{
    wipe();
}

void ProgressBar::draw()
{
    if (!m_indexer.isIndexing()) {
        wipe();
        return;
    }
    constexpr int kWidth = 30;
    const int percent = static_cast<int>(m_indexer.indexingProgress() * 100);
    if (percent == m_drawnPercent)
        return;
    m_drawnPercent = percent;
    const int filled = kWidth * percent / 100;
    const QString bar = QString(filled, u'#') + QString(kWidth - filled, u'.');
    const QString line = u"\r\033[KIndexing [%1] %2 %"_s.arg(bar).arg(percent, 3);
    std::fputs(qPrintable(line), stderr);
    std::fflush(stderr);
}

void ProgressBar::wipe()
{
    if (m_drawnPercent < 0)
        return;
    m_drawnPercent = -1;
    std::fputs("\r\033[K", stderr);
    std::fflush(stderr);
}

} // namespace dugwise
