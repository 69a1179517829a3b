// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FileDescriptor.h"

#include <QByteArray>

#include <arpa/inet.h>
#include <linux/if_link.h>
#include <linux/rtnetlink.h>
#include <linux/veth.h>
#include <net/if.h>
#include <sched.h>
#include <sys/socket.h>

#include <cstring>

/// A network of a test's own, and changes in it.
namespace dugwise::test {

/// Leaves this machine's network for one that has only a loopback interface, switched off. To be
/// called while there is one thread. False where the kernel or a container forbids it.
inline bool enterNetworkNamespace()
{
    return ::unshare(CLONE_NEWNET) == 0 || ::unshare(CLONE_NEWUSER | CLONE_NEWNET) == 0;
}

template <typename Value>
QByteArray bytesOf(const Value &value)
{
    return {reinterpret_cast<const char *>(&value), sizeof(value)};
}

inline QByteArray attribute(quint16 type, const QByteArray &value)
{
    const rtattr head{static_cast<quint16>(sizeof(rtattr) + size_t(value.size())), type};
    const QByteArray padding((4 - value.size() % 4) % 4, '\0');
    return bytesOf(head) + value + padding;
}

inline QByteArray attribute(quint16 type, quint32 value)
{
    return attribute(type, bytesOf(value));
}

inline QByteArray nameAttribute(quint16 type, const char *name)
{
    return attribute(type, QByteArray(name, qsizetype(std::strlen(name)) + 1));
}

/// Has the kernel carry out one change, which is done on return; false when it refuses.
inline bool change(quint16 type, quint16 flags, const QByteArray &body)
{
    const FileDescriptor socket(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE));
    nlmsghdr head = {};
    head.nlmsg_len = static_cast<quint32>(sizeof(head) + size_t(body.size()));
    head.nlmsg_type = type;
    head.nlmsg_flags = static_cast<quint16>(NLM_F_REQUEST | NLM_F_ACK | flags);
    const QByteArray message = bytesOf(head) + body;
    if (::send(socket.get(), message.constData(), size_t(message.size()), 0) != message.size())
        return false;
    struct
    {
        nlmsghdr head;
        nlmsgerr outcome;
    } answer = {};
    return ::recv(socket.get(), &answer, sizeof(answer), 0) >= ssize_t{sizeof(answer)}
           && answer.head.nlmsg_type == NLMSG_ERROR && answer.outcome.error == 0;
}

/// Two interfaces, each the other's far end.
inline bool addPair(const char *one, const char *other)
{
    const QByteArray peer = bytesOf(ifinfomsg{}) + nameAttribute(IFLA_IFNAME, other);
    const QByteArray info = attribute(IFLA_INFO_KIND, QByteArray("veth"))
                            + attribute(IFLA_INFO_DATA, attribute(VETH_INFO_PEER, peer));
    return change(RTM_NEWLINK,
                  NLM_F_CREATE | NLM_F_EXCL,
                  bytesOf(ifinfomsg{}) + nameAttribute(IFLA_IFNAME, one)
                      + attribute(IFLA_LINKINFO, info));
}

inline bool switchInterface(const char *name, bool on)
{
    ifinfomsg link = {};
    link.ifi_index = int(::if_nametoindex(name));
    link.ifi_flags = on ? unsigned{IFF_UP} : 0;
    link.ifi_change = IFF_UP;
    return change(RTM_NEWLINK, 0, bytesOf(link));
}

/// `type` is RTM_NEWADDR or RTM_DELADDR, `address` of IPv4 with a network of 24 bits.
inline bool changeAddress(quint16 type, const char *name, const char *address)
{
    ifaddrmsg head = {};
    head.ifa_family = AF_INET;
    head.ifa_prefixlen = 24;
    head.ifa_index = ::if_nametoindex(name);
    const quint32 number = ::inet_addr(address);
    const quint16 flags = type == RTM_NEWADDR ? NLM_F_CREATE : 0;
    return change(
        type, flags, bytesOf(head) + attribute(IFA_LOCAL, number) + attribute(IFA_ADDRESS, number));
}

/// The body of a message about a route of the main table, to be followed by its attributes.
inline rtmsg routeHead(quint8 family, quint8 prefixLength)
{
    rtmsg head = {};
    head.rtm_family = family;
    head.rtm_dst_len = prefixLength;
    head.rtm_table = RT_TABLE_MAIN;
    head.rtm_protocol = RTPROT_STATIC;
    head.rtm_type = RTN_UNICAST;
    return head;
}

/// The default route, of AF_INET or AF_INET6; `type` is RTM_NEWROUTE or RTM_DELROUTE.
inline bool changeDefaultRoute(quint16 type, quint8 family, const char *name)
{
    const quint16 flags = type == RTM_NEWROUTE ? NLM_F_CREATE | NLM_F_EXCL : 0;
    return change(
        type, flags, bytesOf(routeHead(family, 0)) + attribute(RTA_OIF, ::if_nametoindex(name)));
}

} // namespace dugwise::test
