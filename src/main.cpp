// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine/AnswerText.h"
#include "CommandLine/CommandLine.h"
#include "DugwiseApp.h"
#include "Platform/Platform.h"
#include "Platform/SystemFacilities.h"
#include "SelfTest.h"
#include "Utilities/PrintableText.h"
#include "Views/Window.h"

#include <QFile>
#include <QGuiApplication>

#include <cstdio>

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

int runWindow(int &argc, char **argv)
{
    if (!hasDisplay()) {
        complain(u"there is no display for the window; see dugwise --help for the terminal"_s);
        return 1;
    }
    const QGuiApplication application(argc, argv);
    Platform platform(StandardFolders::ofUser());
    addSystemFacilities(platform);
    platform.folderPicker = std::make_unique<DialogFolderPicker>();
    DugwiseApp app(platform);
    Session session(platform, app.appState(), app.fileIndexer(), app.networkMonitor());
    const Window window(session);
    if (!window.isOpen()) {
        complain(u"the window cannot be made"_s);
        return 1;
    }
    return QGuiApplication::exec();
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
        return runWindow(argc, argv);
    if (arguments->command == Arguments::Command::selfTest) {
        if (!hasDisplay())
            qputenv("QT_QPA_PLATFORM", "offscreen");
        const QGuiApplication application(argc, argv);
        return runSelfTest(arguments->pictures);
    }

    const QCoreApplication application(argc, argv);
    Platform platform(StandardFolders::ofUser());
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
    DugwiseApp app(platform);
    const auto networkMonitor = [&app]() -> NetworkMonitor & { return app.networkMonitor(); };
    CommandLine commandLine(platform, app.appState(), app.fileIndexer(), networkMonitor);
    return commandLine.run(*arguments);
}
