// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DesktopWorkspace.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

/// A file manager that is not running is started for the call.
constexpr int kShowTimeout = 10'000;

} // namespace

void DesktopWorkspace::open(const QString &path)
{
    const QString program = QStandardPaths::findExecutable(u"xdg-open"_s);
    if (program.isEmpty() || !path.startsWith(u'/')) // else it might be read as an option
        return;
    QProcess process;
    process.setProgram(program);
    process.setArguments({path});
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.startDetached();
}

void DesktopWorkspace::showInFileManager(const QString &path)
{
    QDBusMessage call = QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s,
                                                       u"/org/freedesktop/FileManager1"_s,
                                                       u"org.freedesktop.FileManager1"_s,
                                                       u"ShowItems"_s);
    const QStringList items{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)};
    const QString startupId;
    call.setArguments({items, startupId});
    const QDBusPendingCall pending = QDBusConnection::sessionBus().asyncCall(call, kShowTimeout);
    auto *const watcher = new QDBusPendingCallWatcher(pending, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, path, watcher] {
        if (watcher->isError())
            open(QFileInfo(path).path());
        watcher->deleteLater();
    });
}

} // namespace dugwise
