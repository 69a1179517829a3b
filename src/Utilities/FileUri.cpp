// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/FileUri.h"

#include "Utilities/Text.h"

using namespace Qt::StringLiterals;

namespace dugwise {

std::optional<QString> pathOfFileUri(const QString &uri)
{
    QStringView path(uri);
    if (!path.startsWith("file:/"_L1, Qt::CaseInsensitive))
        return std::nullopt;
    path = path.sliced(5);
    for (const auto host : {"//localhost"_L1, "//"_L1}) {
        if (path.startsWith(host)) {
            path = path.sliced(host.size());
            break;
        }
    }
    const QByteArray decoded = QByteArray::fromPercentEncoding(path.toUtf8());
    if (!decoded.startsWith('/') || !decoded.isValidUtf8() || decoded.contains('\0'))
        return std::nullopt;
    return toQString(view(decoded));
}

} // namespace dugwise
