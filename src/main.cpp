// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Application/SelfTest.h"
#include "CommandLine/Access.h"
#include "CommandLine/CommandLine.h"
#include "CommandLine/TerminalAccessPrompt.h"
#include "DugwiseApp.h"
#include "Platform/Platform.h"
#include "Platform/SystemFacilities.h"
#include "Utilities/PrintableText.h"
#include "Views/SingleWindow.h"
#include "Views/Window.h"
#include "Views/WindowServer.h"

#include <QFile>
#include <QGuiApplication>

#include <chrono>
#include <cstdio>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;
using namespace dugwise;

namespace {

/// The locale "C" knows no characters beyond ASCII; its UTF-8 form is the same in all else.
void preferUtf8()
{
    for (const char *variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const QByteArray value = qgetenv(variable);
        if (value.isEmpty())
            continue;
        if (value == "C" || value == "POSIX")
            qputenv(variable, "C.UTF-8");
        return;
    }
    qputenv("LANG", "C.UTF-8");
}

/// Qt ends the program where it finds no display.
bool hasDisplay()
{
    return qEnvironmentVariableIsSet("WAYLAND_DISPLAY") || qEnvironmentVariableIsSet("DISPLAY")
           || qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

/// How long a start waits for the window that is open, or just opening, to take its request.
constexpr std::chrono::seconds kPatience{10};

SingleWindow::Turn
takeTurn(int &argc, char **argv, SingleWindow &singleWindow, const QString &request)
{
    const QCoreApplication application(argc, argv); // needs no display
    return singleWindow.take({request, qEnvironmentVariable("XDG_ACTIVATION_TOKEN")}, kPatience);
}

int runWindow(char **argv, const QString &request)
{
    if (!hasDisplay()) {
        complain(u"there is no display for the window; see dugwise --help for the terminal"_s);
        return 1;
    }
    int argc = 1; // what follows is not for Qt to read
    const StandardFolders folders = StandardFolders::ofUser();
    SingleWindow singleWindow(windowSocketPath(folders.cache));
    const SingleWindow::Turn turn = takeTurn(argc, argv, singleWindow, request);
    if (turn == SingleWindow::Turn::handedOver)
        return 0;
    if (turn == SingleWindow::Turn::unanswered) {
        complain(u"the window that is open does not answer"_s);
        return 1;
    }
    const QGuiApplication application(argc, argv);
    Platform platform(folders);
    addSystemFacilities(platform);
    platform.folderPicker = std::make_unique<DialogFolderPicker>();
    platform.accessPrompt = std::make_unique<SheetAccessPrompt>();
    if (platform.metadataQuery)
        platform.metadataQuery->prepare();
    DugwiseApp app(platform);
    Session session(platform, app.appState(), app.fileIndexer(), app.networkMonitor());
    Window window(session);
    if (!window.isOpen()) {
        complain(u"the window cannot be made"_s);
        return 1;
    }
    session.ask(request);
    std::optional<WindowServer> server(std::in_place, singleWindow.socketPath());
    const auto take = [&](const WindowMessage &message) {
        session.ask(message.request);
        window.raise(message.activationToken);
    };
    QObject::connect(&*server, &WindowServer::received, &session, take);
    const int code = QGuiApplication::exec();
    // What is read from a slow disk may take a while to end; a new window need not wait for it.
    server.reset();
    singleWindow.release();
    return code;
}

} // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): only memory running out throws this far
int main(int argc, char *argv[])
{
    preferUtf8();
    QCoreApplication::setApplicationName(u"Dugwise"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(DUGWISE_VERSION));
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words.append(QFile::decodeName(argv[i]));
    const Outcome<Arguments> arguments = parseArguments(words);
    if (!arguments) {
        complain(arguments.error());
        return 2;
    }
    if (arguments->command == Arguments::Command::help) {
        std::fputs(qPrintable(helpText()), stdout);
        return 0;
    }
    if (arguments->command == Arguments::Command::version) {
        std::puts("dugwise " DUGWISE_VERSION);
        return 0;
    }

    if (arguments->command == Arguments::Command::window)
        return runWindow(argv, arguments->request);
    if (arguments->command == Arguments::Command::selfTest) {
        if (!hasDisplay())
            qputenv("QT_QPA_PLATFORM", "offscreen");
        const QGuiApplication application(argc, argv);
        return runSelfTest(arguments->pictures);
    }

    const QCoreApplication application(argc, argv);
    Platform platform(StandardFolders::ofUser());
    using Command = Arguments::Command;
    const Command command = arguments->command;
    if (command == Command::accessList || command == Command::accessGrant
        || command == Command::accessDeny)
        return runAccess(platform, *arguments);
    addSystemFacilities(platform);
    std::FILE *const log = answersOnStandardOutput(arguments->command) ? stderr : stdout;
    platform.log = [log](const QString &line) {
        std::fputs(qPrintable(printable(line) + u'\n'), log);
        std::fflush(log);
    };
    if (arguments->command == Arguments::Command::preview)
        return printPreview(platform, arguments->file);
    if (!arguments->useSemantic)
        platform.sentenceEmbedding.reset();
    if (!arguments->useSystemSearch)
        platform.metadataQueryCommand.reset();
    if (!arguments->useModel)
        platform.languageModel.reset();
    if (command == Command::ask || command == Command::chat)
        platform.accessPrompt = std::make_unique<TerminalAccessPrompt>();
    DugwiseApp app(platform);
    const auto networkMonitor = [&app]() -> NetworkMonitor & { return app.networkMonitor(); };
    CommandLine commandLine(platform, app.appState(), app.fileIndexer(), networkMonitor);
    return commandLine.run(*arguments);
}
