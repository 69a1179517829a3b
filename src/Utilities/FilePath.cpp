// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/FilePath.h"

using namespace Qt::StringLiterals;

namespace dugwise::FilePath {

QString name(const QString &path)
{
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

QString fileExtension(const QString &path)
{
    const QString last = name(path);
    const qsizetype dot = last.lastIndexOf(u'.');
    return dot > 0 ? last.sliced(dot + 1) : QString();
}

QString folder(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash > 0 ? path.first(slash) : u"/"_s;
}

} // namespace dugwise::FilePath
