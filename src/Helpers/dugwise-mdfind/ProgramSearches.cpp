// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-mdfind/ProgramSearches.h"

#include "Helpers/dugwise-mdfind/FoundPaths.h"
#include "Platform/MetadataSearchServices.h"
#include "Platform/ProgramOutput.h"
#include "Utilities/FilePath.h"
#include "Utilities/Text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

/// Of the names that have the words, only some have the text.
constexpr qsizetype kMostNamesWithTheWords = 1000;

/// Paths and patterns are UTF-8 to the programs too, whatever the locale.
QProcessEnvironment utf8Environment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    return environment;
}

QStringList first(QStringList paths)
{
    paths.resize(std::min(paths.size(), kMostPathsOfOneService));
    return paths;
}

QStringList thoseNamed(QStringList paths, const QString &text)
{
    const QString lowered = lowerCased(text);
    paths.removeIf([&lowered](const QString &path) {
        return !lowerCased(FilePath::name(path)).contains(lowered);
    });
    return paths;
}

} // namespace

QCoro::Task<QStringList> balooPaths(SearchRequest request, std::stop_token stop)
{
    const QString program = balooSearchProgram();
    const QString query = balooQuery(request);
    if (program.isEmpty() || query.isEmpty() || !hasBalooIndex())
        co_return QStringList();
    const qsizetype limit = request.isByName ? kMostNamesWithTheWords : kMostPathsOfOneService;
    const QStringList arguments{u"-l"_s, QString::number(limit), u"--"_s, query};
    const QProcessEnvironment environment = utf8Environment();
    const std::optional<QByteArray> output =
        co_await programOutput(program, arguments, stop, environment);
    QStringList paths = pathsOfLines(output.value_or(QByteArray()));
    if (request.isByName)
        paths = thoseNamed(paths, request.text);
    co_return first(paths);
}

QCoro::Task<QStringList> plocatePaths(SearchRequest request, std::stop_token stop)
{
    const QString program = plocateProgram();
    if (program.isEmpty() || !request.isByName)
        co_return QStringList();
    QProcessEnvironment environment = utf8Environment();
    QStringList arguments{u"-i"_s, u"-b"_s, u"-e"_s, u"-0"_s};
    arguments << u"-l"_s << QString::number(kMostPathsOfOneService);
    // plocate would give up on a machine's missing database before it looks at the others.
    const QString others = environment.value(u"LOCATE_PATH"_s);
    if (!others.isEmpty() && !hasPlocateDatabase()) {
        arguments << u"-d"_s << others;
        environment.remove(u"LOCATE_PATH"_s);
    }
    arguments << u"--"_s << plocatePattern(request.text);
    const std::optional<QByteArray> output =
        co_await programOutput(program, arguments, stop, environment);
    co_return pathsEndedByNul(output.value_or(QByteArray()));
}

} // namespace dugwise
