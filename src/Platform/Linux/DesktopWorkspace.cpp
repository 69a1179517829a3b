// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DesktopWorkspace.h"

#include "Platform/Linux/DetachedProgram.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

/// A file manager that is not running is started for the call.
constexpr int kShowTimeout = 10'000;

/// How xdg-open is told of a file; empty for what it would take for something else. It looks for an
/// address in each line of its argument, reads what begins with a dash as an option, and loses line
/// feeds at the end.
QString openerArgument(const QString &path)
{
    static const QRegularExpression kAddress(u"^[A-Za-z][A-Za-z0-9+.-]*:"_s,
                                             QRegularExpression::MultilineOption);
    if (!path.startsWith(u'/') || path.endsWith(u'\n'))
        return {};
    return path.contains(kAddress) ? QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded) : path;
}

} // namespace

void DesktopWorkspace::open(const QString &path)
{
    const QString program = QStandardPaths::findExecutable(u"xdg-open"_s);
    const QString argument = openerArgument(path);
    if (!program.isEmpty() && !argument.isEmpty())
        startDetached(program, argument, this);
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
