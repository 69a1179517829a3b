// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine/CommandLine.h"

#include "CommandLine/AnswerJson.h"
#include "CommandLine/AnswerText.h"
#include "CommandLine/Preview.h"
#include "CommandLine/ProgressBar.h"
#include "CommandLine/StatusText.h"
#include "Models/AppState.h"
#include "Platform/Platform.h"
#include "Services/FileIndexer.h"
#include "Services/NetworkMonitor.h"
#include "Services/StoredSwitch.h"
#include "Utilities/Formatters.h"
#include "Utilities/PrintableText.h"
#include "Utilities/Text.h"

#include <QEventLoop>
#include <QFileInfo>

#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <string>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr int kDone = 0;
constexpr int kNothing = 1;
constexpr int kNotWritten = 1;
constexpr int kMisuse = 2;

/// Runs the event loop until `isReached` holds, asking again at each `changed` of `sender`.
template <typename Sender, typename Predicate>
void waitUntil(const Sender &sender, void (Sender::*changed)(), Predicate isReached)
{
    QEventLoop loop;
    QObject::connect(&sender, changed, &loop, [&] {
        if (isReached())
            loop.quit();
    });
    if (!isReached())
        loop.exec();
}

void print(const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

void print(const QString &text)
{
    print(text.toUtf8());
}

bool isTerminal(int descriptor)
{
    return ::isatty(descriptor) != 0;
}

} // namespace

CommandLine::CommandLine(const Platform &platform,
                         AppState &appState,
                         FileIndexer &fileIndexer,
                         std::function<NetworkMonitor &()> networkMonitor)
    : m_platform(platform)
    , m_appState(appState)
    , m_fileIndexer(fileIndexer)
    , m_networkMonitor(std::move(networkMonitor))
{}

int CommandLine::run(const Arguments &arguments)
{
    const int status = carryOut(arguments);
    return status == kDone && std::ferror(stdout) != 0 ? kNotWritten : status;
}

int CommandLine::carryOut(const Arguments &arguments)
{
    switch (arguments.command) {
    case Arguments::Command::ask:
        return ask(arguments);
    case Arguments::Command::chat:
        return chat(arguments);
    case Arguments::Command::foldersList:
        return listFolders();
    case Arguments::Command::foldersAdd:
        return addFolder(arguments.folder);
    case Arguments::Command::foldersRemove:
        return removeFolder(arguments.folder);
    case Arguments::Command::index:
        return index();
    case Arguments::Command::status:
        return status();
    case Arguments::Command::window:
    case Arguments::Command::preview:
    case Arguments::Command::accessList:
    case Arguments::Command::accessGrant:
    case Arguments::Command::accessDeny:
    case Arguments::Command::selfTest:
    case Arguments::Command::help:
    case Arguments::Command::version:
        break; // answered without the index
    }
    return kDone;
}

void CommandLine::waitUntilSettled()
{
    const ProgressBar bar(m_fileIndexer);
    waitUntil(m_fileIndexer, &FileIndexer::settled, [&] { return !m_fileIndexer.isBusy(); });
}

void CommandLine::waitUntilReady()
{
    // The person may be asked something first, and no bar is to be drawn over that.
    waitUntil(m_appState, &AppState::started, [&] { return m_appState.isStarted(); });
    waitUntilSettled();
    if (m_fileIndexer.indexedFiles().isEmpty() && isTerminal(STDERR_FILENO))
        complain(u"the index is empty; `dugwise index` walks the folders again"_s);
}

int CommandLine::ask(const Arguments &arguments)
{
    waitUntilReady();
    answer(arguments.request, arguments.json);
    return kDone;
}

int CommandLine::chat(const Arguments &arguments)
{
    waitUntilReady();
    const bool isPrompting = isTerminal(STDIN_FILENO) && isTerminal(STDERR_FILENO);
    std::string line;
    for (;;) {
        if (isPrompting)
            std::fputs("> ", stderr);
        if (!std::getline(std::cin, line))
            break;
        const QString request = toQString(line).trimmed();
        if (request.isEmpty())
            continue;
        answer(request, arguments.json);
        if (!arguments.json)
            print(u"\n"_s);
    }
    return kDone;
}

void CommandLine::answer(const QString &request, bool json)
{
    m_appState.submitQuery(request, m_fileIndexer.indexedFiles());
    waitUntil(m_appState, &AppState::answered, [&] { return !m_appState.isSearching(); });
    const ChatMessage &message = m_appState.messages().last();
    if (json) {
        print(answerJson(request, m_appState.latestAction(), message) + '\n');
        return;
    }
    const TextStyle style{.isTerminal = isTerminal(STDOUT_FILENO), .home = m_platform.folders.home};
    print(answerText(message, style, m_platform.clock.now()));
}

int CommandLine::listFolders()
{
    waitUntilSettled();
    for (const QUrl &folder : m_fileIndexer.indexedFolderURLs()) {
        const QString path = folder.toLocalFile();
        print((isTerminal(STDOUT_FILENO) ? printable(path) : path) + u'\n');
    }
    return kDone;
}

int CommandLine::addFolder(const QString &folder)
{
    const QFileInfo facts(folder);
    if (!facts.isDir()) {
        complain(u"%1 is not a folder"_s.arg(folder));
        return kMisuse;
    }
    if (!facts.isReadable() || !facts.isExecutable()) {
        complain(u"%1 cannot be read"_s.arg(folder));
        return kMisuse;
    }
    waitUntilSettled();
    m_fileIndexer.addFolderURL(QUrl::fromLocalFile(folder));
    waitUntilSettled();
    if (isIndexingOff())
        return kDone;
    print(u"%1 is indexed; %2 in all.\n"_s.arg(
        printable(folder), counted(m_fileIndexer.totalFilesIndexed(), u"file"_s)));
    return kDone;
}

int CommandLine::removeFolder(const QString &folder)
{
    waitUntilSettled();
    const QUrl url = QUrl::fromLocalFile(folder);
    if (!m_fileIndexer.indexedFolderURLs().contains(url)) {
        complain(u"%1 is not an indexed folder"_s.arg(folder));
        return kMisuse;
    }
    m_fileIndexer.removeFolder(url);
    waitUntilSettled();
    print(u"%1 is no longer indexed; %2 left.\n"_s.arg(
        printable(folder), counted(m_fileIndexer.indexedFiles().size(), u"file"_s)));
    return kDone;
}

/// Tells the person when nothing is walked.
bool CommandLine::isIndexingOff() const
{
    const bool isOff = !kEnableLocalIndexing.isOn(m_platform.userDefaults);
    if (isOff)
        complain(u"local indexing is off in the settings: nothing was indexed"_s);
    return isOff;
}

int CommandLine::index()
{
    waitUntilSettled();
    if (isIndexingOff())
        return kNothing;
    m_fileIndexer.reindexAll();
    waitUntilSettled();
    print(u"%1 indexed in %2.\n"_s.arg(
        counted(m_fileIndexer.totalFilesIndexed(), u"file"_s),
        counted(m_fileIndexer.indexedFolderURLs().size(), u"folder"_s)));
    return kDone;
}

int CommandLine::status()
{
    waitUntilSettled();
    waitUntil(m_appState, &AppState::started, [&] { return m_appState.isStarted(); });
    const NetworkMonitor &network = m_networkMonitor();
    if (m_platform.networkPathMonitor) {
        waitUntil(network, &NetworkMonitor::connectionTypeChanged, [&] {
            return network.connectionType() != NetworkMonitor::kUnknown;
        });
    }
    print(statusText(m_platform, m_appState, m_fileIndexer, network));
    return kDone;
}

int printPreview(const Platform &platform, const QString &file)
{
    std::optional<QString> text = previewText(platform, file);
    if (!text) {
        complain(u"there is no text in %1"_s.arg(file));
        return kNothing;
    }
    if (isTerminal(STDOUT_FILENO))
        text = printableLines(*text);
    print(text->endsWith(u'\n') ? *text : *text + u'\n');
    return std::ferror(stdout) == 0 ? kDone : kNotWritten;
}

bool answersOnStandardOutput(Arguments::Command command)
{
    switch (command) {
    case Arguments::Command::ask:
    case Arguments::Command::chat:
    case Arguments::Command::foldersList:
    case Arguments::Command::preview:
    case Arguments::Command::status:
    case Arguments::Command::accessList:
    case Arguments::Command::accessGrant:
    case Arguments::Command::accessDeny:
        return true;
    default:
        return false;
    }
}

void complain(const QString &problem)
{
    const QByteArray line = u"dugwise: %1\n"_s.arg(printable(problem)).toUtf8();
    std::fputs(line.constData(), stderr);
}

} // namespace dugwise
