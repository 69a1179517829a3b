// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/HelperProgram.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

std::optional<QString> fileNearProgram(const QString &installedIn, const QString &name)
{
    const QString here = QCoreApplication::applicationDirPath();
    for (const QString &folder : {here, here + installedIn}) {
        const QFileInfo file(folder + u'/' + name);
        if (file.isFile())
            return file.absoluteFilePath();
    }
    return std::nullopt;
}

} // namespace

std::optional<QString> helperProgram(const QString &name)
{
    return fileNearProgram(u"/../libexec/dugwise"_s, name);
}

std::optional<QString> dataFile(const QString &name)
{
    return fileNearProgram(u"/../share/dugwise"_s, name);
}

} // namespace dugwise
