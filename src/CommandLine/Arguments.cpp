// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine/Arguments.h"

#include "Services/AccessRequest.h"

#include <QDir>
#include <QHash>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

/// The words of a command line, options apart.
struct Words
{
    QStringList plain;
    QStringList options;
};

Words split(const QStringList &words)
{
    Words found;
    bool isPlainFromHere = false;
    for (const QString &word : words) {
        if (isPlainFromHere || !word.startsWith(u'-') || word.size() == 1)
            found.plain.append(word);
        else if (word == "--"_L1)
            isPlainFromHere = true;
        else
            found.options.append(word);
    }
    return found;
}

QString absolutePath(const QString &path)
{
    return QDir::cleanPath(QDir::current().absoluteFilePath(path));
}

Failure unknownOption(const QString &option)
{
    return {u"unknown option %1 (write -- before a request that begins with a dash)"_s.arg(option)};
}

Outcome<Arguments> withoutOptions(const Arguments &arguments, const Words &words, qsizetype used)
{
    if (!words.options.isEmpty())
        return unknownOption(words.options.first());
    if (words.plain.size() > used)
        return Failure{u"unexpected word: %1"_s.arg(words.plain[used])};
    return arguments;
}

Outcome<Arguments> parseRequest(Arguments arguments, const Words &words)
{
    for (const QString &option : words.options) {
        if (option == "--json"_L1)
            arguments.json = true;
        else if (option == "--no-semantic"_L1)
            arguments.useSemantic = false;
        else if (option == "--no-system-search"_L1)
            arguments.useSystemSearch = false;
        else if (option == "--no-model"_L1)
            arguments.useModel = false;
        else
            return unknownOption(option);
    }
    arguments.request = words.plain.mid(1).join(u' ').trimmed();
    const bool isAsk = arguments.command == Arguments::Command::ask;
    if (isAsk && arguments.request.isEmpty())
        return Failure{u"ask needs a request, for example: dugwise ask notes from last week"_s};
    if (!isAsk && !arguments.request.isEmpty())
        return Failure{u"chat reads its requests from standard input, a line each"_s};
    return arguments;
}

/// Words that begin with none of the commands: a request for the window.
Outcome<Arguments> parseWindow(const Words &words)
{
    Arguments arguments;
    arguments.request = words.plain.join(u' ').trimmed();
    return withoutOptions(arguments, words, words.plain.size());
}

Outcome<Arguments> parseFolders(Arguments arguments, const Words &words)
{
    const QString action = words.plain.value(1, u"list"_s);
    if (action == "list"_L1) {
        arguments.command = Arguments::Command::foldersList;
        return withoutOptions(arguments, words, 2);
    }
    const bool isAdd = action == "add"_L1;
    if (!isAdd && action != "remove"_L1)
        return Failure{u"folders knows list, add DIR and remove DIR, not: %1"_s.arg(action)};
    const QString folder = words.plain.value(2);
    if (folder.isEmpty())
        return Failure{u"folders %1 needs a folder"_s.arg(action)};
    arguments.command = isAdd ? Arguments::Command::foldersAdd : Arguments::Command::foldersRemove;
    arguments.folder = absolutePath(folder);
    return withoutOptions(arguments, words, 3);
}

Outcome<Arguments> parseAccess(Arguments arguments, const Words &words)
{
    const QString action = words.plain.value(1, u"list"_s);
    if (action == "list"_L1) {
        arguments.command = Arguments::Command::accessList;
        return withoutOptions(arguments, words, 2);
    }
    const bool isGrant = action == "grant"_L1;
    if (!isGrant && action != "deny"_L1)
        return Failure{u"access knows list, grant SOURCE and deny SOURCE, not: %1"_s.arg(action)};
    const QString name = words.plain.value(2);
    const std::optional<PersonalData> source = personalDataNamed(name);
    if (!source) {
        const QString given = name.isEmpty() ? u""_s : u", not: "_s + name;
        return Failure{u"access %1 needs calendar or contacts%2"_s.arg(action, given)};
    }
    arguments.command = isGrant ? Arguments::Command::accessGrant : Arguments::Command::accessDeny;
    arguments.source = *source;
    return withoutOptions(arguments, words, 3);
}

Outcome<Arguments> parsePreview(Arguments arguments, const Words &words)
{
    const QString file = words.plain.value(1);
    if (file.isEmpty())
        return Failure{u"preview needs a file"_s};
    arguments.command = Arguments::Command::preview;
    arguments.file = absolutePath(file);
    return withoutOptions(arguments, words, 2);
}

Outcome<Arguments> parseSelfTest(Words words)
{
    Arguments arguments{.command = Arguments::Command::selfTest};
    words.options.removeOne("--self-test"_L1);
    if (!words.plain.isEmpty())
        arguments.pictures = absolutePath(words.plain.first());
    return withoutOptions(arguments, words, 1);
}

} // namespace

Outcome<Arguments> parseArguments(const QStringList &all)
{
    const Words words = split(all);
    if (words.options.contains("--self-test"_L1))
        return parseSelfTest(words);
    Arguments arguments;
    if (all.value(0) == "--"_L1)
        return parseWindow(words);
    if (words.plain.isEmpty()) {
        const QString option = words.options.value(0);
        if (option == "--help"_L1) {
            arguments.command = Arguments::Command::help;
            return arguments;
        }
        if (option == "--version"_L1) {
            arguments.command = Arguments::Command::version;
            return arguments;
        }
        return option.isEmpty() ? Outcome<Arguments>(arguments) : unknownOption(option);
    }
    if (words.options.contains("--help"_L1)) {
        arguments.command = Arguments::Command::help;
        return arguments;
    }

    const QString &command = words.plain.first();
    if (command == "ask"_L1 || command == "chat"_L1) {
        arguments.command =
            command == "ask"_L1 ? Arguments::Command::ask : Arguments::Command::chat;
        return parseRequest(arguments, words);
    }
    if (command == "folders"_L1)
        return parseFolders(arguments, words);
    if (command == "access"_L1)
        return parseAccess(arguments, words);
    if (command == "preview"_L1)
        return parsePreview(arguments, words);
    if (command == "index"_L1 || command == "status"_L1) {
        arguments.command =
            command == "index"_L1 ? Arguments::Command::index : Arguments::Command::status;
        return withoutOptions(arguments, words, 1);
    }
    return parseWindow(words);
}

QString helpText()
{
    return uR"(Dugwise finds your files from what you remember of them, on this machine alone.

  dugwise [REQUEST...]                 the window, and the request asked in it
  dugwise ask [options] REQUEST...     one request, one answer
  dugwise chat [options]               one conversation: a request a line on standard input
  dugwise folders [list | add DIR | remove DIR]
  dugwise index                        walk every folder again
  dugwise preview FILE                 the text of a file
  dugwise status                       what is indexed, what is on, and why not
  dugwise access [list | grant SOURCE | deny SOURCE]
                                       what may be read: SOURCE is calendar or contacts
  dugwise --self-test [DIR]            whether the window works here; a picture of each state in DIR
  dugwise --help | --version

A request for the window goes to the one that is open, if there is one. Write -- before a request
that begins with a dash or with the name of a command.

Calendar and contacts are read only after you have said yes, once: the window asks, and so do ask and
chat on a terminal. dugwise access shows your answers and changes them, from the next start on.

Options of ask and chat:
  --json               one JSON object a request, on one line
  --no-semantic        do not search by meaning
  --no-system-search   do not search beyond the indexed folders
  --no-model           do not use a language model
)"_s;
}

} // namespace dugwise
