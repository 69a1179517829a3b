// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/InterfaceTypes.h"
#include "Platform/Linux/RouteMonitor.h"
#include "Platform/Linux/RoutedPath.h"
#include "support/NetworkNamespace.h"
#include "support/SampleFiles.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTest>

#include <vector>

using namespace Qt::StringLiterals;
using namespace dugwise;
using namespace dugwise::test;

namespace {

using Type = NetworkPath::InterfaceType;
using Types = NetworkPath::InterfaceTypes;

constexpr int kEthernet = 1;
constexpr int kWifi = 2;
constexpr int kTunnel = 3;
constexpr int kUnplugged = 4;
const QStringList kNames{u""_s, u"eth0"_s, u"wlan0"_s, u"tun0"_s, u"eth1"_s};

const QStringList kInterfaces{u"eth0/type=1"_s,
                              u"wlan0/type=1"_s,
                              u"wlan0/uevent=INTERFACE=wlan0\nDEVTYPE=wlan"_s,
                              u"tun0/type=65534"_s,
                              u"tun0/tun_flags=0x1001"_s,
                              u"eth1/type=1"_s};

/// A folder as sysfs has it: "path=content" for a file, "path>target" for a link, "path/" for a
/// folder.
std::unique_ptr<QTemporaryDir> sysfsWith(const QStringList &entries)
{
    auto folder = std::make_unique<QTemporaryDir>();
    for (const QString &entry : entries) {
        const qsizetype end = entry.indexOf(QRegularExpression(u"[=>]|/$"_s));
        const QString path = folder->filePath(entry.first(end));
        const QString rest = entry.sliced(end + 1);
        QDir().mkpath(QFileInfo(path).path());
        if (entry.at(end) == u'=')
            writeFile(path, rest.toUtf8() + '\n');
        else if (entry.at(end) == u'>')
            QFile::link(rest, path);
        else
            QDir().mkpath(path);
    }
    return folder;
}

std::optional<NetworkLink> linkOf(int interface)
{
    if (interface >= kNames.size())
        return std::nullopt;
    return NetworkLink{kNames.at(interface), interface != kUnplugged};
}

/// Keeps what a monitor reports.
struct Reports
{
    explicit Reports(const QString &sysfs)
        : monitor(sysfs)
    {
        monitor.start([this](const NetworkPath &path) { paths.append(path); });
    }
    RouteMonitor monitor;
    QList<NetworkPath> paths;
};

} // namespace

class TstNetworkPathMonitor : public QObject
{
    Q_OBJECT

public:
    explicit TstNetworkPathMonitor(bool hasOwnNetwork)
        : m_hasOwnNetwork(hasOwnNetwork)
    {}

private:
    bool m_hasOwnNetwork;

private Q_SLOTS:
    void tellsWhatAnInterfaceIs_data()
    {
        QTest::addColumn<QStringList>("sysfs");
        QTest::addColumn<Types>("types");
        const auto row = [](const char *name, const QStringList &sysfs, Types types) {
            QTest::newRow(name) << sysfs << types;
        };
        row("nothing there", {}, {});
        row("wired",
            {u"x/type=1"_s, u"x/uevent=INTERFACE=x"_s, u"x/device>.."_s},
            Type::wiredEthernet);
        row("far end of a container", {u"x/type=1"_s}, Type::wiredEthernet);
        row("a driver's own kind", {u"x/type=1"_s, u"x/uevent=DEVTYPE=wlan"_s}, Type::wifi);
        row("wireless folder", {u"x/type=1"_s, u"x/wireless/"_s}, Type::wifi);
        row("wireless device", {u"x/type=1"_s, u"x/phy80211>.."_s}, Type::wifi);
        row("modem as Ethernet", {u"x/type=1"_s, u"x/uevent=DEVTYPE=wwan"_s}, Type::cellular);
        row("modem, raw", {u"x/type=519"_s, u"x/uevent=A=b\nDEVTYPE=wwan"_s}, Type::cellular);
        row("a telephone over Bluetooth",
            {u"x/type=1"_s, u"x/uevent=DEVTYPE=bluetooth"_s, u"x/device>.."_s},
            Type::other);
        row("another device", {u"x/type=32"_s, u"x/device>.."_s}, Type::other);
        row("tunnel", {u"x/type=65534"_s, u"x/uevent=DEVTYPE=wireguard"_s}, {});
        row("tunnel of Ethernet", {u"x/type=1"_s, u"x/tun_flags=0x1002"_s}, {});
        row("telephone line", {u"x/type=512"_s, u"x/uevent=DEVTYPE=ppp"_s}, {});
        row("bridge",
            {u"x/type=1"_s,
             u"x/uevent=DEVTYPE=bridge"_s,
             u"x/lower_eth0>../eth0"_s,
             u"x/lower_tap0>../tap0"_s,
             u"eth0/type=1"_s,
             u"tap0/type=1"_s,
             u"tap0/tun_flags=0x1002"_s},
            Type::wiredEthernet);
        row("bridge without ports", {u"x/type=1"_s, u"x/uevent=DEVTYPE=bridge"_s}, {});
        row("VLAN on a bond of two",
            {u"x/type=1"_s,
             u"x/lower_bond0>../bond0"_s,
             u"bond0/bonding/active_slave="_s,
             u"bond0/lower_eth0>../eth0"_s,
             u"bond0/lower_wlan0>../wlan0"_s,
             u"eth0/type=1"_s,
             u"wlan0/wireless/"_s},
            Type::wiredEthernet | Type::wifi);
        row("bond of which one works",
            {u"x/bonding/active_slave=wlan0"_s,
             u"x/lower_eth0>../eth0"_s,
             u"x/lower_wlan0>../wlan0"_s,
             u"eth0/type=1"_s,
             u"wlan0/wireless/"_s},
            Type::wifi);
        row("in a circle",
            {u"x/lower_y>../y"_s, u"y/lower_x>../x"_s, u"y/lower_y>../y"_s, u"y/type=1"_s},
            {});
    }
    void tellsWhatAnInterfaceIs()
    {
        QFETCH(const QStringList, sysfs);
        const auto folder = sysfsWith(sysfs);
        QTEST(interfaceTypes(folder->path(), u"x"_s), "types");
    }

    void followsTheBestRoute_data()
    {
        QTest::addColumn<QList<Route>>("routes");
        QTest::addColumn<Types>("types"); // empty: not satisfied
        const auto row = [](const char *name, const QList<Route> &routes, Types types) {
            QTest::newRow(name) << routes << types;
        };
        const auto all = [](quint32 metric, const QList<int> &interfaces) {
            return Route{false, true, metric, interfaces};
        };
        const auto allOfIPv6 = [](quint32 metric, const QList<int> &interfaces) {
            return Route{true, true, metric, interfaces};
        };
        const auto one = [](const QList<int> &interfaces) {
            return Route{false, false, 0, interfaces};
        };
        row("none", {}, {});
        row("to a single place only", {one({kEthernet})}, {});
        row("lowest metric", {all(600, {kWifi}), all(100, {kEthernet})}, Type::wiredEthernet);
        row("IPv4 first", {allOfIPv6(1, {kWifi}), all(100, {kEthernet})}, Type::wiredEthernet);
        row("IPv6 alone", {allOfIPv6(1024, {kWifi})}, Type::wifi);
        row("unplugged", {all(100, {kUnplugged})}, {});
        row("best unplugged", {all(100, {kUnplugged}), all(600, {kWifi})}, Type::wifi);
        row("an interface that has gone", {all(0, {99}), all(600, {kWifi})}, Type::wifi);
        row("over several at once",
            {all(0, {kUnplugged, kWifi, kEthernet})},
            Type::wifi | Type::wiredEthernet);
        row("VPN beside a default route",
            {all(50, {kTunnel}), all(100, {kEthernet}), all(600, {kWifi})},
            Type::wiredEthernet);
        row("VPN whose other end is reached another way",
            {all(50, {kTunnel}), all(100, {kEthernet}), one({kTunnel}), one({kWifi})},
            Type::wifi);
        row("VPN that took the default route's place",
            {all(0, {kTunnel}), one({kWifi})},
            Type::wifi);
        row("VPN over it cannot be known what",
            {all(0, {kTunnel}), one({kWifi}), one({kEthernet})},
            Type::other);
        row("VPN over nothing that is seen", {all(0, {kTunnel})}, Type::other);
    }
    void followsTheBestRoute()
    {
        QFETCH(const QList<Route>, routes);
        QFETCH(const Types, types);
        const auto folder = sysfsWith(kInterfaces);
        const NetworkPath path = routedPath(routes, linkOf, folder->path());
        QCOMPARE(path.interfaceTypes, types);
        QCOMPARE(path.isSatisfied, types != Types());
    }

    void readsRoutes_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QList<int>>("interfaces"); // empty: of no use
        const auto row =
            [](const char *name, rtmsg head, const QByteArray &rest, const QList<int> &all) {
                QTest::newRow(name) << bytesOf(head) + rest << all;
            };
        const QByteArray over7 = attribute(RTA_OIF, 7);
        const QByteArray byGateway = attribute(RTA_GATEWAY, 0x0100000a);
        const rtmsg head = routeHead(AF_INET, 0);
        row("default", head, attribute(RTA_TABLE, RT_TABLE_MAIN) + over7, {7});
        row("another table", head, attribute(RTA_TABLE, 51820) + over7, {});
        row("network", routeHead(AF_INET, 24), over7 + byGateway, {});
        row("single place", routeHead(AF_INET, 32), over7 + byGateway, {7});
        row("single place of IPv6", routeHead(AF_INET6, 128), over7 + byGateway, {7});
        row("half an IPv6 address", routeHead(AF_INET6, 32), over7 + byGateway, {});
        row("neighbour", routeHead(AF_INET, 32), over7, {});
        row("no interface", head, byGateway, {});
        rtmsg other = head;
        other.rtm_type = RTN_UNREACHABLE;
        row("way to nowhere", other, over7, {});
        other = head;
        other.rtm_flags = RTNH_F_LINKDOWN;
        row("unplugged", other, over7, {});
        other = routeHead(AF_INET, 32);
        other.rtm_flags = RTM_F_CLONED;
        row("learnt", other, over7 + byGateway, {});
        const QByteArray hops = bytesOf(rtnexthop{8 + 8, 0, 0, 7}) + byGateway
                                + bytesOf(rtnexthop{8, RTNH_F_DEAD, 0, 8})
                                + bytesOf(rtnexthop{8, 0, 0, 9});
        row("several next hops", head, attribute(RTA_MULTIPATH, hops), {7, 9});
    }
    void readsRoutes()
    {
        QFETCH(const QByteArray, body);
        QFETCH(const QList<int>, interfaces);
        const std::optional<Route> route = parseRoute(body);
        QCOMPARE(route ? route->interfaces : QList<int>(), interfaces);
    }

    void readsNothingBeyondAMessage()
    {
        const QByteArray hops = bytesOf(rtnexthop{8 + 8, 0, 0, 7}) + attribute(RTA_GATEWAY, 1)
                                + bytesOf(rtnexthop{8, 0, 0, 9});
        const QByteArray route = bytesOf(routeHead(AF_INET, 0)) + attribute(RTA_PRIORITY, 100)
                                 + attribute(RTA_MULTIPATH, hops);
        const QByteArray link = bytesOf(ifinfomsg{}) + nameAttribute(IFLA_IFNAME, "eth0");
        const auto parse = [](const std::vector<char> &bytes) { // no byte to spare at its end
            const QByteArrayView body(bytes.data(), qsizetype(bytes.size()));
            const std::optional<NetworkLink> readLink = parseLink(body);
            QVERIFY(!readLink || readLink->name.size() <= 5);
            const std::optional<Route> readRoute = parseRoute(body);
            QVERIFY(!readRoute || readRoute->interfaces.size() <= 2);
        };
        for (const QByteArray &whole : {route, link}) {
            for (qsizetype size = 0; size <= whole.size(); ++size)
                parse(std::vector<char>(whole.begin(), whole.begin() + size));
            for (qsizetype at = 0; at < whole.size(); ++at) {
                for (const char wrong : {'\0', '\1', '\3', '\x7f', '\xff'}) {
                    std::vector<char> bytes(whole.begin(), whole.end());
                    bytes[size_t(at)] = wrong;
                    parse(bytes);
                }
            }
        }
        QVERIFY(!parseRoute(route.first(route.size() - qsizetype{sizeof(rtnexthop)} - 1)));
        QVERIFY(!parseLink(link.chopped(6)));
    }

    void reportsEachChange()
    {
        if (!m_hasOwnNetwork)
            QSKIP("this kernel, or a container, forbids network namespaces");
        const auto folder = sysfsWith({u"near/type=1"_s});
        const NetworkPath none;
        const NetworkPath wired{true, Type::wiredEthernet};
        Reports reports(folder->path());
        QVERIFY(reports.paths.isEmpty()); // from the event loop alone
        QList<NetworkPath> expected{none};
        QTRY_COMPARE(reports.paths, expected);

        QVERIFY(addPair("near", "far"));
        QVERIFY(switchInterface("near", true) && switchInterface("far", true));
        QVERIFY(changeAddress(RTM_NEWADDR, "near", "10.7.0.1"));
        QVERIFY(changeDefaultRoute(RTM_NEWROUTE, AF_INET, "near"));
        expected.append(wired);
        QTRY_COMPARE(reports.paths, expected);
        QVERIFY(switchInterface("far", false)); // the cable is pulled
        expected.append(none);
        QTRY_COMPARE(reports.paths, expected);
        QVERIFY(switchInterface("far", true));
        expected.append(wired);
        QTRY_COMPARE(reports.paths, expected);
        QVERIFY(changeDefaultRoute(RTM_DELROUTE, AF_INET, "near"));
        expected.append(none);
        QTRY_COMPARE(reports.paths, expected);
        QVERIFY(changeDefaultRoute(RTM_NEWROUTE, AF_INET6, "near"));
        expected.append(wired);
        QTRY_COMPARE(reports.paths, expected);

        // More than the kernel keeps for a reader, and the one that counts comes last.
        for (int i = 0; i < 1000; ++i) {
            QVERIFY(changeAddress(RTM_NEWADDR, "near", "10.8.0.1"));
            QVERIFY(changeAddress(RTM_DELADDR, "near", "10.8.0.1"));
        }
        QVERIFY(changeDefaultRoute(RTM_DELROUTE, AF_INET6, "near"));
        expected.append(none);
        QTRY_COMPARE(reports.paths, expected);

        reports.monitor.cancel();
        QVERIFY(changeDefaultRoute(RTM_NEWROUTE, AF_INET, "near"));
        QTest::qWait(50);
        QCOMPARE(reports.paths, expected);
        NetworkPath again;
        reports.monitor.start([&](const NetworkPath &path) {
            again = path;
            reports.monitor.cancel(); // by the one that is called
        });
        QTRY_COMPARE(again, wired);
        QVERIFY(switchInterface("near", false));
        QTest::qWait(50);
        QCOMPARE(again, wired);
    }
};

int main(int argc, char *argv[])
{
    const bool hasOwnNetwork = enterNetworkNamespace(); // before there are threads
    const QCoreApplication application(argc, argv);
    TstNetworkPathMonitor test(hasOwnNetwork);
    return QTest::qExec(&test, argc, argv);
}
#include "tst_NetworkPathMonitor.moc"
