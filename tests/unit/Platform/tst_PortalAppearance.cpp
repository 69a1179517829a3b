// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/PortalAppearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <sys/socket.h>
#include <sys/un.h>

#include <cmath>
#include <cstring>

using namespace Qt::StringLiterals;

namespace dugwise::test {

using Settings = QMap<QString, QVariantMap>;

/// What a desktop offers on the bus.
class Portal final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    Settings settings;
    QStringList asked;

    void change(const QString &group, const QString &key, const QVariant &value)
    {
        settings[group].insert(key, value);
        QDBusMessage signal = QDBusMessage::createSignal(u"/org/freedesktop/portal/desktop"_s,
                                                         u"org.freedesktop.portal.Settings"_s,
                                                         u"SettingChanged"_s);
        signal.setArguments({group, key, QVariant::fromValue(QDBusVariant(value))});
        QDBusConnection(u"portal"_s).send(signal);
    }

public Q_SLOTS:
    QMap<QString, QVariantMap> ReadAll(const QStringList &groups)
    {
        asked = groups;
        return settings;
    }
};

class TstPortalAppearance : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QProcess m_bus;
    Portal m_portal;
    QList<Appearance> m_seen;

    [[nodiscard]] QString busPath() const { return m_folder.filePath(u"bus"_s); }
    void follow(PortalAppearance &appearance)
    {
        m_seen.clear();
        appearance.start([this](const Appearance &now) { m_seen.append(now); });
    }

private Q_SLOTS:
    void initTestCase()
    {
        qDBusRegisterMetaType<Settings>();
        qputenv("DBUS_SESSION_BUS_ADDRESS",
                "unix:path=" + busPath().toUtf8() + ";unix:path=/nonexistent");
    }
    void init() { qunsetenv("GTK_THEME"); }

    /// Before the others, which start a bus: Qt never asks for it a second time.
    void withoutABusNothingIsKnown()
    {
        PortalAppearance appearance;
        follow(appearance);
        QTest::qWait(50);
        QVERIFY(m_seen.isEmpty());
    }

    void withoutABusThereIsTheTheme_data()
    {
        QTest::addColumn<QByteArray>("theme");
        QTest::addColumn<bool>("isDark");
        QTest::newRow("dark form") << QByteArray("Adwaita:dark") << true;
        QTest::newRow("dark by name") << QByteArray("Yaru-dark") << true;
        QTest::newRow("light") << QByteArray("Adwaita") << false;
    }
    void withoutABusThereIsTheTheme()
    {
        QFETCH(QByteArray, theme);
        QFETCH(bool, isDark);
        qputenv("GTK_THEME", theme);
        PortalAppearance appearance;
        follow(appearance);
        QTRY_COMPARE(m_seen.size(), 1);
        QCOMPARE(m_seen.constFirst(), Appearance{.isDark = isDark});
    }

    void aBusThatHangsCostsNothing()
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        const QByteArray path = QFile::encodeName(busPath());
        QVERIFY(static_cast<std::size_t>(path.size()) < sizeof(address.sun_path));
        std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
        const FileDescriptor listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        const auto *const generic = reinterpret_cast<const sockaddr *>(&address);
        QCOMPARE(::bind(listener.get(), generic, sizeof(address)), 0);
        QCOMPARE(::listen(listener.get(), 1), 0);

        QElapsedTimer timer;
        timer.start();
        {
            PortalAppearance appearance;
            follow(appearance);
            QTest::qWait(50);
            // One whose backlog is full does not even let connect.
            PortalAppearance second;
            PortalAppearance third;
            follow(second);
            follow(third);
        }
        QVERIFY(timer.elapsed() < 1000);
        QVERIFY(m_seen.isEmpty());
        QVERIFY(QFile::remove(busPath()));
    }

    void theDesktopIsFollowed()
    {
        if (QStandardPaths::findExecutable(u"dbus-daemon"_s).isEmpty())
            QSKIP("without dbus-daemon there is no bus");
        m_bus.start(u"dbus-daemon"_s,
                    {u"--session"_s,
                     u"--nofork"_s,
                     u"--print-address"_s,
                     u"--address=unix:path="_s + busPath()});
        QVERIFY(m_bus.waitForReadyRead()); // the address, once it listens there

        // Nobody has settings yet; who comes later is heard.
        PortalAppearance early;
        follow(early);
        QTest::qWait(100);
        QVERIFY(m_seen.isEmpty());

        QDBusConnection bus =
            QDBusConnection::connectToBus(u"unix:path="_s + busPath(), u"portal"_s);
        QVERIFY(bus.registerObject(
            u"/org/freedesktop/portal/desktop"_s, &m_portal, QDBusConnection::ExportAllSlots));
        QVERIFY(bus.registerService(u"org.freedesktop.portal.Desktop"_s));
        const QString look = u"org.freedesktop.appearance"_s;
        const QString gnome = u"org.gnome.desktop.interface"_s;
        m_portal.change(look, u"color-scheme"_s, 1U);
        QTRY_COMPARE(m_seen.size(), 1);
        QCOMPARE(m_seen.constLast(), Appearance{.isDark = true});
        early.cancel();

        PortalAppearance appearance;
        m_portal.settings[gnome] = {{u"enable-animations"_s, false},
                                    {u"text-scaling-factor"_s, 1.25},
                                    {u"font-name"_s, u"Cantarell 11"_s}};
        follow(appearance);
        QTRY_COMPARE(m_seen.size(), 1);
        const Appearance first{.isDark = true, .reducesMotion = true, .textScale = 1.25};
        QCOMPARE(m_seen.constLast(), first);
        QVERIFY(m_portal.asked.contains(look) && m_portal.asked.contains(gnome));

        m_portal.change(look, u"color-scheme"_s, 2U);
        m_portal.change(gnome, u"font-name"_s, u"Inter 11"_s); // of no concern
        m_portal.change(gnome, u"enable-animations"_s, true);
        m_portal.change(gnome, u"text-scaling-factor"_s, 40.0);
        m_portal.change(gnome, u"text-scaling-factor"_s, std::nan(""));
        m_portal.change(look, u"color-scheme"_s, u"odd"_s);
        m_portal.change(u"org.kde.kdeglobals.KDE"_s, u"AnimationDurationFactor"_s, u"0"_s);
        m_portal.change(u"org.kde.kdeglobals.KDE"_s, u"AnimationDurationFactor"_s, u"0.5"_s);
        const QList<Appearance> expected{
            first,
            {.isDark = false, .reducesMotion = true, .textScale = 1.25},
            {.isDark = false, .textScale = 1.25},
            {.isDark = false, .textScale = 3},
            {.isDark = false},
            {},
            {.reducesMotion = true},
            {},
        };
        QTRY_COMPARE(m_seen.size(), expected.size());
        QCOMPARE(m_seen, expected);

        appearance.cancel();
        m_portal.change(look, u"color-scheme"_s, 1U);
        QTest::qWait(50);
        QCOMPARE(m_seen, expected);
    }

    /// A portal that does not answer holds nothing up, and one that goes away does no harm.
    void aPortalThatDiesIsForgotten()
    {
        PortalAppearance appearance;
        follow(appearance);
        m_bus.terminate();
        m_bus.waitForFinished();
        QTest::qWait(50);
        QVERIFY(m_seen.size() <= 1);
        QDBusConnection::disconnectFromBus(u"portal"_s);
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstPortalAppearance)
#include "tst_PortalAppearance.moc"
