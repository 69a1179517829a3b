// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-mdfind/ProgramSearches.h"
#include "Helpers/dugwise-mdfind/SearchRequest.h"
#include "Helpers/dugwise-mdfind/TrackerSearch.h"
#include "Utilities/Text.h"

#include <QCoreApplication>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace std::string_view_literals;

namespace dugwise {

namespace {

/// For all services together; they are asked side by side.
constexpr auto kLongestWait = 2s;

/// Of `[-name] [--] TEXT`; absent when the arguments are something else.
std::optional<SearchRequest> parse(std::span<char *> arguments)
{
    const bool isByName = !arguments.empty() && arguments.front() == "-name"sv;
    if (isByName)
        arguments = arguments.subspan(1);
    const bool isMarked = arguments.size() > 1 && arguments.front() == "--"sv;
    if (isMarked)
        arguments = arguments.subspan(1);
    if (arguments.size() != 1)
        return std::nullopt;
    const std::string_view text = arguments.front();
    if (text.starts_with('-') && !isByName && !isMarked)
        return std::nullopt;
    const SearchRequest request{toQString(text).trimmed(), isByName};
    return request.text.isEmpty() ? std::nullopt : std::optional(request);
}

bool isPlasma()
{
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':').contains(u"KDE"_s);
}

/// What all services give, the desktop's own first, each path once.
QCoro::Task<QStringList> foundPaths(SearchRequest request, std::stop_token stop)
{
    if (request.isByName && !canBeInName(request.text))
        co_return QStringList();
    QCoro::Task<QStringList> byBaloo = balooPaths(request, stop);
    QCoro::Task<QStringList> byPlocate = plocatePaths(request, stop);
    QCoro::Task<QStringList> byTracker = trackerPaths(request, stop);
    const QStringList ofBaloo = co_await byBaloo;
    const QStringList ofPlocate = co_await byPlocate;
    const QStringList ofTracker = co_await byTracker;
    QStringList paths = isPlasma() ? ofBaloo + ofTracker : ofTracker + ofBaloo;
    paths.append(ofPlocate);
    paths.removeDuplicates();
    co_return paths;
}

} // namespace

} // namespace dugwise

// NOLINTNEXTLINE(bugprone-exception-escape): only memory running out throws this far
int main(int argc, char *argv[])
{
    using namespace dugwise;
    const auto request = parse(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
    if (!request) {
        std::fputs("usage: dugwise-mdfind [-name] [--] TEXT\n", stderr);
        return 2;
    }
    const QCoreApplication application(argc, argv);
    std::stop_source stop;
    QTimer::singleShot(
        kLongestWait, Qt::PreciseTimer, &application, [&stop] { stop.request_stop(); });
    const QStringList paths = QCoro::waitFor(foundPaths(*request, stop.get_token()));
    for (const QString &path : paths)
        std::puts(path.toUtf8().constData());
    std::fflush(stdout);
    std::_Exit(0); // a service that hangs holds its thread for ever
}
