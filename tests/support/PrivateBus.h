// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/SampleFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>

#include <sys/prctl.h>
#include <sys/wait.h>

namespace dugwise::test {

/// A session bus of this test's own, which is this process's as long as it lives; one at a time.
/// The services that it starts keep what they keep in a home folder, and end with it.
class PrivateBus
{
public:
    /// `services`: a folder of service files, in place of the system's.
    explicit PrivateBus(const QString &home, const QString &services = {})
        // The same each time: libdbus looks for it only once.
        : m_socket(QDir::tempPath()
                   + QStringLiteral("/dugwise-bus-%1").arg(QCoreApplication::applicationPid()))
        , m_address(QStringLiteral("unix:path=") + m_socket)
    {
        ::prctl(PR_SET_CHILD_SUBREAPER, 1);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const QList<std::pair<const char *, QString>> variables{
            {"HOME", home},
            {"XDG_CONFIG_HOME", home + QStringLiteral("/.config")},
            {"XDG_DATA_HOME", home + QStringLiteral("/.local/share")},
            {"XDG_CACHE_HOME", home + QStringLiteral("/.cache")},
            {"XDG_RUNTIME_DIR", home},
            {"DBUS_SESSION_BUS_ADDRESS", m_address},
            {"GSETTINGS_BACKEND", QStringLiteral("memory")},
            {"GIO_USE_VFS", QStringLiteral("local")},
            {"LC_ALL", QStringLiteral("C.UTF-8")},
        };
        for (const auto &[name, value] : variables)
            environment.insert(QString::fromLatin1(name), value);
        QStringList arguments{QStringLiteral("--nofork"), QStringLiteral("--nopidfile")};
        if (services.isEmpty()) {
            arguments += {QStringLiteral("--session"), QStringLiteral("--address=") + m_address};
        } else {
            const QString configuration = home + QStringLiteral("/bus.conf");
            writeFile(
                configuration,
                "<busconfig><type>session</type><listen>" + m_address.toUtf8()
                    + "</listen><auth>EXTERNAL</auth><servicedir>" + services.toUtf8()
                    + "</servicedir><policy context=\"default\"><allow send_destination=\"*\" "
                      "eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow "
                      "own=\"*\"/></policy></busconfig>");
            arguments.append(QStringLiteral("--config-file=") + configuration);
        }
        m_process.setProcessEnvironment(environment);
        m_process.setStandardOutputFile(QProcess::nullDevice());
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(QStringLiteral("dbus-daemon"), arguments);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_socket), kPatience);
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_address.toUtf8());
    }
    Q_DISABLE_COPY_MOVE(PrivateBus)
    ~PrivateBus()
    {
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        m_process.terminate();
        m_process.waitForFinished(kPatience);
        QFile::remove(m_socket);
        while (::waitpid(-1, nullptr, WNOHANG) > 0) { // services that are gone with it
        }
    }

    [[nodiscard]] QString address() const { return m_address; }
    [[nodiscard]] qint64 processId() const { return m_process.processId(); }

    static constexpr int kPatience = 20'000; ///< milliseconds; for a slow machine

private:
    QString m_socket;
    QString m_address;
    QProcess m_process;
};

} // namespace dugwise::test
