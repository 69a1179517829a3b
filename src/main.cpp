// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine/AnswerText.h"
#include "CommandLine/CommandLine.h"
#include "DugwiseApp.h"
#include "Platform/Platform.h"
#include "Platform/SystemFacilities.h"

#include <QCoreApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

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

} // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): only memory running out throws this far
int main(int argc, char *argv[])
{
    using namespace dugwise;
    preferUtf8();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"Dugwise"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(DUGWISE_VERSION));

    const Outcome<Arguments> arguments = parseArguments(QCoreApplication::arguments().mid(1));
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
