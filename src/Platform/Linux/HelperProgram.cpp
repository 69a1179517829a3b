// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/HelperProgram.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace dugwise {

std::optional<QString> helperProgram(const QString &name)
{
    const QString here = QCoreApplication::applicationDirPath();
    for (const QString &folder : {here, here + u"/../libexec/dugwise"_s}) {
        const QFileInfo program(folder + u'/' + name);
        if (program.isFile() && program.isExecutable())
            return program.absoluteFilePath();
    }
    return std::nullopt;
}

} // namespace dugwise
