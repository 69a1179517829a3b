// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-mdfind/TrackerSearch.h"

#include "Helpers/dugwise-mdfind/FoundPaths.h"
#include "Platform/MetadataSearchServices.h"

#include <QCoroFuture>
#include <QFile>
#include <QPromise>
#include <QSet>

#include <libtracker-sparql/tracker-sparql.h>

#include <algorithm>
#include <memory>
#include <thread>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

struct Unref
{
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename T>
using Ref = std::unique_ptr<T, Unref>;

using Connection = Ref<TrackerSparqlConnection>;

/// CONTAINS would take the text for a pattern.
const char kByName[] =
    "SELECT ?file { GRAPH tracker:FileSystem { ?file a nfo:FileDataObject ; nfo:fileName ?name ."
    " FILTER(STRAFTER(CONCAT(LCASE(?name), '/'), LCASE(~word0)) != '') } } LIMIT 80";

/// One of the service's indexes of words.
struct WordIndex
{
    QByteArray graph;
    QByteArray file; ///< the variable that has the file
    QByteArray item; ///< what else is known of an ?item that has the words
};

const WordIndex &contents()
{
    static const WordIndex kContents{
        "tracker:Documents", "?file", "a nie:InformationElement ; nie:isStoredAs ?file"};
    return kContents;
}

const WordIndex &names()
{
    static const WordIndex kNames{"tracker:FileSystem", "?item", "a nfo:FileDataObject"};
    return kNames;
}

/// For the number of items that have one word. Both indexes counted at once take a thousand times
/// as long.
QByteArray byCount(const WordIndex &index)
{
    return "SELECT COUNT(?item) { GRAPH " + index.graph + " { ?item fts:match ~word0 } }";
}

/// For the files that have one word or two, best first: the first word ranks them, and the lowest
/// rank is the best. A match takes its text for one phrase, whatever is in it, so that each word
/// needs its own.
QByteArray byWords(const WordIndex &index, bool isPair, int limit)
{
    const QByteArray graph = "{ GRAPH " + index.graph + " { ?item ";
    const QByteArray second = " { SELECT ?item " + graph + "fts:match ~word1 } } }";
    return "SELECT DISTINCT " + index.file + ' ' + graph + index.item + " ; fts:match ~word0 }"
           + (isPair ? second : "") + " } ORDER BY ASC(fts:rank(?item)) LIMIT "
           + QByteArray::number(limit);
}

/// The bus of this session, if there is one already: GLib would start one.
Ref<GDBusConnection> sessionBus()
{
    const QString usual = qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus"_L1;
    if (!qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") && !QFile::exists(usual))
        return {};
    return Ref<GDBusConnection>(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
}

/// The service itself, by the bus's own name for it: asking for a name that nobody has any more
/// starts nobody.
Connection runningService()
{
    const Ref<GDBusConnection> bus = sessionBus();
    if (!bus)
        return {};
    for (const char *name :
         {"org.freedesktop.Tracker3.Miner.Files", "org.freedesktop.LocalSearch3"}) {
        GVariant *const reply = g_dbus_connection_call_sync(bus.get(),
                                                            "org.freedesktop.DBus",
                                                            "/org/freedesktop/DBus",
                                                            "org.freedesktop.DBus",
                                                            "GetNameOwner",
                                                            g_variant_new("(s)", name),
                                                            G_VARIANT_TYPE("(s)"),
                                                            G_DBUS_CALL_FLAGS_NONE,
                                                            -1,
                                                            nullptr,
                                                            nullptr);
        if (!reply)
            continue;
        const gchar *owner = nullptr;
        g_variant_get(reply, "(&s)", &owner);
        Connection connection(
            tracker_sparql_connection_bus_new(owner, nullptr, bus.get(), nullptr));
        g_variant_unref(reply);
        return connection;
    }
    return {};
}

/// The index as it lies there; it is neither made nor mended.
Connection index()
{
    const QByteArray folder = QFile::encodeName(trackerIndexFolder());
    if (folder.isEmpty())
        return {};
    const Ref<GFile> file(g_file_new_for_path(folder.constData()));
    return Connection(tracker_sparql_connection_new(
        TRACKER_SPARQL_CONNECTION_FLAGS_READONLY, file.get(), nullptr, nullptr, nullptr));
}

/// The first column that the statement gives, with its words bound to it; none when it cannot be
/// run.
QByteArrayList
run(TrackerSparqlConnection *connection, const QByteArray &sparql, const QStringList &words)
{
    const Ref<TrackerSparqlStatement> statement(tracker_sparql_connection_query_statement(
        connection, sparql.constData(), nullptr, nullptr));
    if (!statement)
        return {};
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QByteArray name = "word" + QByteArray::number(i);
        tracker_sparql_statement_bind_string(
            statement.get(), name.constData(), words[i].toUtf8().constData());
    }
    const Ref<TrackerSparqlCursor> cursor(
        tracker_sparql_statement_execute(statement.get(), nullptr, nullptr));
    QByteArrayList column;
    while (cursor && tracker_sparql_cursor_next(cursor.get(), nullptr, nullptr))
        column.append(tracker_sparql_cursor_get_string(cursor.get(), 0, nullptr));
    return column;
}

/// The words that the service knows, the rarest first: it finds the others among its files quickly,
/// and it is the one to rank by. Passed over are those that it knows from no file, as it does the
/// stop words of the user's language; all files would be missed for them.
QStringList knownWords(TrackerSparqlConnection *connection, const QStringList &words)
{
    if (words.size() <= 1)
        return words;
    QList<std::pair<int, QString>> counted;
    for (const QString &word : words) {
        int count = 0;
        for (const WordIndex &index : {contents(), names()})
            count += run(connection, byCount(index), {word}).value(0).toInt();
        if (count > 0)
            counted.emplaceBack(count, word);
    }
    std::ranges::stable_sort(counted, {}, &std::pair<int, QString>::first);
    QStringList known;
    for (const auto &[count, word] : std::as_const(counted))
        known.append(word);
    return known;
}

/// The files that have all words. More than two in one query would take seconds; the files that
/// have the first word, the rarest, and one of the others are soon compared.
QByteArrayList
filesWith(TrackerSparqlConnection *connection, const WordIndex &index, const QStringList &words)
{
    constexpr int kEnoughToCompare = 250;
    const int limit = words.size() > 2 ? kEnoughToCompare : int{kMostPathsOfOneService};
    QByteArrayList files = run(connection,
                               byWords(index, words.size() > 1, limit),
                               words.first(std::min<qsizetype>(words.size(), 2)));
    for (qsizetype i = 2; i < words.size() && !files.isEmpty(); ++i) {
        const QByteArrayList others =
            run(connection, byWords(index, true, limit), {words[0], words[i]});
        const QSet<QByteArray> kept(others.begin(), others.end());
        files.removeIf([&kept](const QByteArray &file) { return !kept.contains(file); });
    }
    return files;
}

/// Blocks until the service has answered.
QStringList query(const SearchRequest &request)
{
    Connection connection = runningService();
    if (!connection)
        connection = index();
    if (!connection)
        return {};
    QByteArrayList uris;
    if (request.isByName) {
        uris = run(connection.get(), kByName, {request.text});
    } else if (const auto words = knownWords(connection.get(), contentWords(request.text));
               !words.isEmpty()) {
        uris = filesWith(connection.get(), contents(), words);
        uris += filesWith(connection.get(), names(), words);
    }
    QStringList paths = pathsOfUris(uris);
    paths.removeDuplicates();
    paths.resize(std::min(paths.size(), kMostPathsOfOneService));
    return paths;
}

} // namespace

QCoro::Task<QStringList> trackerPaths(SearchRequest request, std::stop_token stop)
{
    // The first answer counts: that of the service, or none when time is up.
    const auto promise = std::make_shared<QPromise<QStringList>>();
    promise->start();
    const auto answer = [promise](const QStringList &paths) {
        promise->addResult(paths);
        promise->finish();
    };
    std::thread([answer, request] { answer(query(request)); }).detach();
    const std::stop_callback givingUp(stop, [answer] { answer({}); });
    const QFuture<QStringList> future = promise->future();
    const QStringList paths = co_await future;
    co_return paths;
}

} // namespace dugwise
