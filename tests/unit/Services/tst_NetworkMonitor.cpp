// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/NetworkMonitor.h"
#include "support/Fakes.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

using Type = NetworkPath::InterfaceType;

class TstNetworkMonitor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesTheConnection_data()
    {
        QTest::addColumn<NetworkPath>("path");
        QTest::addColumn<QString>("connectionType");
        const auto row = [](const char *name, const NetworkPath &path, const QString &type) {
            QTest::newRow(name) << path << type;
        };
        row("nothing", {false, {}}, u"None"_s);
        row("wireless", {true, Type::wifi}, u"Wi-Fi"_s);
        row("modem", {true, Type::cellular}, u"Cellular"_s);
        row("wired", {true, Type::wiredEthernet}, u"Ethernet"_s);
        row("anything else", {true, Type::other}, u"None"_s);
        row("wireless and wired", {true, Type::wifi | Type::wiredEthernet}, u"Wi-Fi"_s);
        row("modem and wired", {true, Type::cellular | Type::wiredEthernet}, u"Cellular"_s);
        row("wireless that leads nowhere", {false, Type::wifi}, u"Wi-Fi"_s);
    }
    void namesTheConnection()
    {
        QFETCH(const NetworkPath, path);
        FakeNetworkPathMonitor paths;
        const NetworkMonitor monitor(&paths);
        QVERIFY(!monitor.isConnected());
        QCOMPARE(monitor.connectionType(), u"Unknown"_s);
        paths.updateHandler(path);
        QCOMPARE(monitor.isConnected(), path.isSatisfied);
        QTEST(monitor.connectionType(), "connectionType");
    }

    void announcesChangesOnly()
    {
        FakeNetworkPathMonitor paths;
        const NetworkMonitor monitor(&paths);
        const QSignalSpy connected(&monitor, &NetworkMonitor::isConnectedChanged);
        const QSignalSpy type(&monitor, &NetworkMonitor::connectionTypeChanged);
        QString typeWhenConnected;
        connect(&monitor, &NetworkMonitor::isConnectedChanged, this, [&] {
            typeWhenConnected = monitor.connectionType();
        });
        paths.updateHandler({true, Type::wifi});
        QCOMPARE(typeWhenConnected, u"Wi-Fi"_s);
        paths.updateHandler({true, Type::wifi | Type::other});
        paths.updateHandler({true, Type::wiredEthernet});
        QCOMPARE(connected.size(), 1);
        QCOMPARE(type.size(), 2);
    }

    void watchesAsLongAsItLives()
    {
        FakeNetworkPathMonitor paths;
        auto monitor = std::make_unique<NetworkMonitor>(&paths);
        const NetworkPathMonitor::UpdateHandler late = paths.updateHandler;
        monitor.reset();
        QVERIFY(!paths.updateHandler);
        late({true, Type::wifi}); // dropped

        const NetworkMonitor without(nullptr);
        QVERIFY(!without.isConnected());
        QCOMPARE(without.connectionType(), u"Unknown"_s);
    }
};

QTEST_GUILESS_MAIN(TstNetworkMonitor)
#include "tst_NetworkMonitor.moc"
