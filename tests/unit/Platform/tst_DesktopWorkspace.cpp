// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DesktopWorkspace.h"
#include "support/SampleFiles.h"

#include <QDBusConnection>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace dugwise::test {

/// What a file manager offers on the bus.
class FileManager final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    QStringList shown;

public Q_SLOTS:
    void ShowItems(const QStringList &items, const QString & /*startupId*/) { shown.append(items); }
};

class TstDesktopWorkspace : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QProcess m_bus;
    DesktopWorkspace m_workspace;

    [[nodiscard]] QString path(const QString &relative) const
    {
        return m_folder.filePath(relative);
    }
    /// Everything that xdg-open was given, each argument ended by NUL.
    [[nodiscard]] QByteArray opened() const { return readFile(path(u"opened"_s)); }

private Q_SLOTS:
    void initTestCase()
    {
        const QString opener = path(u"bin/xdg-open"_s);
        writeFile(opener,
                  "#!/bin/sh\necho chatter\nprintf '%s\\0' \"$@\" >> '" + path(u"opened"_s).toUtf8()
                      + "'\n");
        QVERIFY(QFile::setPermissions(opener, QFile::ReadOwner | QFile::ExeOwner));
        qputenv("PATH", path(u"bin"_s).toUtf8() + ":/usr/bin:/bin");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path(u"bus"_s).toUtf8());
    }
    void init() { QFile::remove(path(u"opened"_s)); }

    void aFileIsOpenedAndNothingElse_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"plain.txt",
                                 "with blanks.txt",
                                 "a'b\"c.txt",
                                 "-rf",
                                 "$(touch x)`y`;&|.txt",
                                 "two\nlines",
                                 "%41%2F#?.txt",
                                 "caf\u00E9 \u05E9 \U0001F389.pdf",
                                 "*"})
            QTest::newRow(name) << QString::fromUtf8(name);
    }
    void aFileIsOpenedAndNothingElse()
    {
        QFETCH(QString, name);
        const QString file = u"/nowhere/"_s + name;
        m_workspace.open(file);
        QTRY_COMPARE(opened(), file.toUtf8() + '\0');
    }

    void whatIsNoPathIsNotOpened()
    {
        m_workspace.open(u"--help"_s);
        m_workspace.open(u"https://example.com"_s);
        m_workspace.open(u"/nowhere/a.txt\n"_s);   // the opener would open another file
        m_workspace.open(u"/nowhere/a\nhttp:b"_s); // and here take part of it for an address
        const QByteArray address("file:///nowhere/a%0Ahttp:b\0", 27);
        QTRY_COMPARE(opened(), address);
        init();
        m_workspace.open(u"/the/end"_s);
        QTRY_COMPARE(opened(), QByteArray("/the/end\0", 9));
    }

    void withoutAnOpenerNothingHappens()
    {
        const QByteArray before = qgetenv("PATH");
        qputenv("PATH", "/nonexistent");
        m_workspace.open(u"/nowhere/a.txt"_s);
        qputenv("PATH", before);
    }

    void filesAreShownInTheFileManager()
    {
        if (QStandardPaths::findExecutable(u"dbus-daemon"_s).isEmpty())
            QSKIP("without dbus-daemon there is no bus");
        m_bus.start(u"dbus-daemon"_s,
                    {u"--session"_s, u"--nofork"_s, u"--address=unix:path="_s + path(u"bus"_s)});
        QTRY_VERIFY(QFile::exists(path(u"bus"_s)));

        // Nobody shows files yet: the folder is opened.
        m_workspace.showInFileManager(u"/nowhere/in here/a.txt"_s);
        QTRY_COMPARE(opened(), QByteArray("/nowhere/in here\0", 17));

        FileManager manager;
        QDBusConnection bus =
            QDBusConnection::connectToBus(u"unix:path="_s + path(u"bus"_s), u"manager"_s);
        QVERIFY(bus.registerObject(
            u"/org/freedesktop/FileManager1"_s, &manager, QDBusConnection::ExportAllSlots));
        QVERIFY(bus.registerService(u"org.freedesktop.FileManager1"_s));
        m_workspace.showInFileManager(u"/nowhere/a b#%.txt"_s);
        QTRY_COMPARE(manager.shown, QStringList{u"file:///nowhere/a%20b%23%25.txt"_s});
        QCOMPARE(opened().size(), 17);
        QDBusConnection::disconnectFromBus(u"manager"_s);
    }

    void cleanupTestCase()
    {
        m_bus.terminate();
        m_bus.waitForFinished();
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstDesktopWorkspace)
#include "tst_DesktopWorkspace.moc"
