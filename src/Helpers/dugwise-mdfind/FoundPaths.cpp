// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-mdfind/FoundPaths.h"

#include "Utilities/FileUri.h"
#include "Utilities/Text.h"

namespace dugwise {

namespace {

bool isLine(const QByteArray &path)
{
    return path.startsWith('/') && !path.contains('\n') && !path.contains('\0')
           && path.isValidUtf8();
}

QStringList lines(const QByteArrayList &paths)
{
    QStringList kept;
    for (const QByteArray &path : paths) {
        if (isLine(path))
            kept.append(toQString(view(path)));
    }
    return kept;
}

} // namespace

QStringList pathsOfUris(const QByteArrayList &uris)
{
    QStringList paths;
    for (const QByteArray &uri : uris) {
        const auto path = pathOfFileUri(toQString(view(uri)));
        if (path && !path->contains(u'\n'))
            paths.append(*path);
    }
    return paths;
}

QStringList pathsOfLines(const QByteArray &output)
{
    QByteArrayList paths;
    for (const QByteArray &line : output.split('\n')) {
        if (line.startsWith('/'))
            paths.append(line);
        else if (!line.isEmpty() && !paths.isEmpty())
            paths.last() += '\n' + line; // what follows a line feed in a name
    }
    return lines(paths);
}

QStringList pathsEndedByNul(const QByteArray &output)
{
    return lines(output.split('\0'));
}

} // namespace dugwise
