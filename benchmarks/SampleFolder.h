// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SampleText.h"

#include <QDir>
#include <QFile>

namespace dugwise::bench {

/// Writes text files of 5,000 characters on average, a hundred in a folder below `folder`.
inline void makeFiles(const QString &folder, int count)
{
    constexpr unsigned kAverageSize = 5000;
    SampleText sample(2);
    QString below;
    for (int i = 0; i < count; ++i) {
        if (i % 100 == 0) {
            below = folder + QStringLiteral("/%1").arg(i / 100);
            QDir().mkpath(below);
        }
        QFile file(below + QStringLiteral("/note %1.txt").arg(i));
        if (!file.open(QFile::WriteOnly))
            qFatal("cannot make the files");
        file.write(sample.text(kAverageSize / 2 + sample.number(kAverageSize)));
    }
}

} // namespace dugwise::bench
