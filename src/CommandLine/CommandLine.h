// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CommandLine/Arguments.h"

#include <functional>

namespace dugwise {

class AppState;
class FileIndexer;
class NetworkMonitor;
struct Platform;

/// Carries out one command on the application's own objects and returns the exit status: 0, 1 when
/// the answer could not be written, 2 on misuse.
class CommandLine
{
public:
    /// `networkMonitor` is called by the commands that need it, so that no other starts watching.
    CommandLine(const Platform &platform,
                AppState &appState,
                FileIndexer &fileIndexer,
                std::function<NetworkMonitor &()> networkMonitor);

    [[nodiscard]] int run(const Arguments &arguments);

private:
    [[nodiscard]] int carryOut(const Arguments &arguments);
    void waitUntilSettled();
    void waitUntilReady();
    [[nodiscard]] int ask(const Arguments &arguments);
    [[nodiscard]] int chat(const Arguments &arguments);
    [[nodiscard]] int listFolders();
    [[nodiscard]] int addFolder(const QString &folder);
    [[nodiscard]] int removeFolder(const QString &folder);
    [[nodiscard]] bool isIndexingOff() const;
    [[nodiscard]] int index();
    [[nodiscard]] int status();
    void answer(const QString &request, bool json);

    const Platform &m_platform;
    AppState &m_appState;
    FileIndexer &m_fileIndexer;
    std::function<NetworkMonitor &()> m_networkMonitor;
};

/// Prints the text of a file; 1 when it has none. Needs no index.
[[nodiscard]] int printPreview(const Platform &platform, const QString &file);

/// Whether the command's answer goes to standard output, which must then hold nothing else.
[[nodiscard]] bool answersOnStandardOutput(Arguments::Command command);

/// Says on standard error, in one line, what is wrong.
void complain(const QString &problem);

} // namespace dugwise
