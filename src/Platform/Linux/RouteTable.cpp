// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/RouteTable.h"

#include "Platform/Linux/Netlink.h"
#include "Utilities/Text.h"

#include <linux/if.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

namespace dugwise {

namespace {

using Netlink::after;
using Netlink::bytesOf;
using Netlink::forEachRecord;
using Netlink::valueAt;

constexpr unsigned kUnusable = RTNH_F_DEAD | RTNH_F_LINKDOWN;
constexpr unsigned kLearnt = RTM_F_CLONED; // for one place, from an answer of a gateway

/// A text that ends with a zero, or with the attribute.
std::string_view textOf(QByteArrayView value)
{
    const std::string_view text(value.data(), static_cast<std::size_t>(value.size()));
    return text.substr(0, text.find('\0'));
}

/// The interfaces of a route that has several next hops.
QList<int> usableInterfaces(QByteArrayView nextHops)
{
    QList<int> interfaces;
    forEachRecord(nextHops, &rtnexthop::rtnh_len, [&](const rtnexthop &hop, QByteArrayView) {
        if ((hop.rtnh_flags & kUnusable) == 0 && !interfaces.contains(hop.rtnh_ifindex))
            interfaces.append(hop.rtnh_ifindex);
    });
    return interfaces;
}

} // namespace

std::optional<Route> parseRoute(QByteArrayView body)
{
    const std::optional<rtmsg> head = valueAt<rtmsg>(body);
    if (!head || head->rtm_type != RTN_UNICAST || (head->rtm_flags & (kUnusable | kLearnt)) != 0)
        return std::nullopt;
    Route route{.isIPv6 = head->rtm_family == AF_INET6, .isDefault = head->rtm_dst_len == 0};
    quint32 table = head->rtm_table;
    bool hasGateway = false;
    forEachRecord(after<rtmsg>(body), &rtattr::rta_len, [&](const rtattr &attribute, auto value) {
        const quint32 number = valueAt<quint32>(value).value_or(0);
        switch (attribute.rta_type) {
        case RTA_TABLE:
            table = number;
            break;
        case RTA_PRIORITY:
            route.metric = number;
            break;
        case RTA_GATEWAY:
        case RTA_VIA:
            hasGateway = true;
            break;
        case RTA_OIF:
            route.interfaces = {static_cast<int>(number)};
            break;
        case RTA_MULTIPATH:
            route.interfaces = usableInterfaces(value);
            break;
        default:
            break;
        }
    });
    const bool isToOnePlace = hasGateway && head->rtm_dst_len == (route.isIPv6 ? 128 : 32);
    if (table != RT_TABLE_MAIN || route.interfaces.isEmpty() || !(route.isDefault || isToOnePlace))
        return std::nullopt;
    return route;
}

std::optional<NetworkLink> parseLink(QByteArrayView body)
{
    constexpr unsigned kNeeded = IFF_UP | IFF_RUNNING | IFF_LOWER_UP;
    const std::optional<ifinfomsg> head = valueAt<ifinfomsg>(body);
    if (!head)
        return std::nullopt;
    NetworkLink link{.name = {}, .isUp = (head->ifi_flags & kNeeded) == kNeeded};
    forEachRecord(
        after<ifinfomsg>(body), &rtattr::rta_len, [&](const rtattr &attribute, auto value) {
            if (attribute.rta_type == IFLA_IFNAME)
                link.name = toQString(textOf(value));
        });
    return link.name.isEmpty() ? std::nullopt : std::optional(link);
}

QList<Route> readRoutes(const FileDescriptor &socket)
{
    QList<Route> routes;
    for (const quint8 family : {quint8{AF_INET}, quint8{AF_INET6}}) {
        rtmsg request = {};
        request.rtm_family = family;
        const auto keep = [&routes](const nlmsghdr &head, QByteArrayView body) {
            if (head.nlmsg_type != RTM_NEWROUTE)
                return;
            if (const std::optional<Route> route = parseRoute(body))
                routes.append(*route);
        };
        // Where it breaks off, what came is still true.
        (void)Netlink::ask(socket, RTM_GETROUTE, NLM_F_DUMP, bytesOf(request), keep);
    }
    return routes;
}

std::optional<NetworkLink> readLink(const FileDescriptor &socket, int interface)
{
    ifinfomsg request = {};
    request.ifi_index = interface;
    std::optional<NetworkLink> link;
    const auto keep = [&link](const nlmsghdr &head, QByteArrayView body) {
        if (head.nlmsg_type == RTM_NEWLINK)
            link = parseLink(body);
    };
    return Netlink::ask(socket, RTM_GETLINK, 0, bytesOf(request), keep) ? link : std::nullopt;
}

} // namespace dugwise
