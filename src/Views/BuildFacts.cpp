// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/BuildFacts.h"

#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace dugwise {

QString BuildFacts::text()
{
#ifdef __clang__
    const QString compiler = u"Clang "_s + QLatin1StringView(__clang_version__);
#else
    const QString compiler = u"GCC "_s + QLatin1StringView(__VERSION__);
#endif
    return u"%1, %2, Qt %3"_s.arg(
        QSysInfo::buildCpuArchitecture(), compiler, QLatin1StringView(qVersion()));
}

} // namespace dugwise
