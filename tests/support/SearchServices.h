// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/SampleFiles.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <sys/prctl.h>
#include <sys/wait.h>

#include <csignal>

namespace dugwise::test {

/// The desktop search services, run for real in a home folder and on a session bus of their own.
/// All that they start becomes a child of this process, so that an end can be seen.
class SearchServices
{
public:
    SearchServices()
    {
        ::prctl(PR_SET_CHILD_SUBREAPER, 1);
        const auto set = [this](const char *name, const QString &value) {
            m_environment.insert(QString::fromLatin1(name), value);
        };
        set("HOME", path(QString()));
        set("XDG_CONFIG_HOME", path(QStringLiteral("config")));
        set("XDG_DATA_HOME", path(QStringLiteral("data")));
        set("XDG_CACHE_HOME", path(QStringLiteral("cache")));
        set("XDG_RUNTIME_DIR", path(QStringLiteral("run")));
        set("TMPDIR", path(QStringLiteral("tmp"))); // Tracker indexes nothing below it
        set("DBUS_SESSION_BUS_ADDRESS", busAddress());
        set("LOCATE_PATH", path(QStringLiteral("plocate.db")));
        set("GSETTINGS_BACKEND", QStringLiteral("keyfile"));
        set("GIO_USE_VFS", QStringLiteral("local"));
        set("QT_QPA_PLATFORM", QStringLiteral("offscreen"));
        set("LC_ALL", QStringLiteral("C.UTF-8"));
        for (const char *folder : {"run", "tmp"})
            QDir().mkpath(path(QString::fromLatin1(folder)));
    }
    ~SearchServices() { stop(); }
    Q_DISABLE_COPY_MOVE(SearchServices)

    [[nodiscard]] QString path(const QString &relative) const { return m_home.filePath(relative); }
    [[nodiscard]] QString busAddress() const
    {
        return QStringLiteral("unix:path=") + path(QStringLiteral("run/bus"));
    }
    [[nodiscard]] QProcessEnvironment environment() const { return m_environment; }

    void startBus()
    {
        start(m_bus,
              QStringLiteral("dbus-daemon"),
              {QStringLiteral("--session"),
               QStringLiteral("--nofork"),
               QStringLiteral("--address=") + busAddress()});
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path(QStringLiteral("run/bus"))), kPatience);
    }

    /// Indexes these folders; settings as GLib keeps them in a file.
    void startTracker(const QStringList &folders)
    {
        const QByteArray list = "['" + folders.join(QStringLiteral("', '")).toUtf8() + "']";
        writeFile(path(QStringLiteral("config/glib-2.0/settings/keyfile")),
                  "[org/freedesktop/tracker/miner/files]\nindex-recursive-directories=" + list
                      + "\nindex-single-directories=@as []\n"
                        "index-applications=false\ninitial-sleep=0\n");
        start(
            m_tracker, QStringLiteral("tracker-miner-fs-3"), {QStringLiteral("--initial-sleep=0")});
    }
    void stopTracker() { end(m_tracker); }

    void startBaloo(const QStringList &folders)
    {
        writeFile(path(QStringLiteral("config/baloofilerc")),
                  "[Basic Settings]\nIndexing-Enabled=true\n[General]\nexclude folders=\n"
                  "only basic indexing=false\nfirst run=true\nfolders="
                      + folders.join(u',').toUtf8() + '\n');
        start(m_baloo, QStringLiteral("baloo_file"), {});
    }

    /// Makes plocate's database of all that is below the folder now.
    void updatePlocate(const QString &folder)
    {
        QProcess update;
        start(update,
              QStringLiteral("updatedb.plocate"),
              {QStringLiteral("-U"),
               folder,
               QStringLiteral("-o"),
               path(QStringLiteral("plocate.db")),
               QStringLiteral("-l"),
               QStringLiteral("no"),
               QStringLiteral("--prunepaths"),
               QString()});
        QVERIFY(update.waitForFinished(kPatience));
        QCOMPARE(update.exitCode(), 0);
    }

    /// Ends all services; those that the bus has started end with it.
    void stop()
    {
        end(m_tracker);
        end(m_baloo);
        end(m_bus);
    }

    /// Whether no process is left of all that were started, by whomever.
    [[nodiscard]] static bool isEveryProcessGone()
    {
        while (::waitpid(-1, nullptr, WNOHANG) > 0) {
        }
        return ::waitpid(-1, nullptr, WNOHANG) < 0;
    }

    static constexpr int kPatience = 120'000; ///< milliseconds; for a slow machine

private:
    void start(QProcess &process, const QString &name, const QStringList &arguments) const
    {
        QString program = QStandardPaths::findExecutable(name);
        for (const QString &lib : {QStringLiteral("/usr/libexec"),
                                   QStringLiteral("/usr/lib/" DUGWISE_ARCHITECTURE "/libexec"),
                                   QStringLiteral("/usr/sbin")}) {
            if (program.isEmpty())
                program = QStandardPaths::findExecutable(name, {lib});
        }
        QVERIFY2(!program.isEmpty(), qPrintable(name + QStringLiteral(" is not installed")));
        process.setProcessEnvironment(m_environment);
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(program, arguments);
        QVERIFY2(process.waitForStarted(kPatience), qPrintable(name));
    }
    static void end(QProcess &process)
    {
        process.terminate();
        if (process.state() != QProcess::NotRunning && !process.waitForFinished(kPatience))
            process.kill();
        process.waitForFinished(kPatience);
    }

    QTemporaryDir m_home;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
    QProcess m_bus;
    QProcess m_tracker;
    QProcess m_baloo;
};

} // namespace dugwise::test
