// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/LoopbackServer.h"

#include <QFile>

#include <arpa/inet.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

/// Lists of blocked names take a few megabytes.
constexpr qint64 kMostHosts = qint64{16} * 1024 * 1024;

const QString kLoopback4 = u"127.0.0.1"_s;
const QString kLoopback6 = u"::1"_s;

bool isLoopback(const QString &address)
{
    const QByteArray digits = address.toLatin1();
    in_addr ipv4 = {};
    if (::inet_pton(AF_INET, digits.constData(), &ipv4) == 1)
        return ntohl(ipv4.s_addr) >> IN_CLASSA_NSHIFT == IN_LOOPBACKNET;
    in6_addr ipv6 = {};
    return ::inet_pton(AF_INET6, digits.constData(), &ipv6) == 1 && IN6_IS_ADDR_LOOPBACK(&ipv6);
}

/// The addresses that the hosts file gives a name, in its order.
QStringList listedAddresses(const QString &name, const QString &hostsFile)
{
    QStringList addresses;
    QFile file(hostsFile);
    if (!file.open(QFile::ReadOnly))
        return addresses;
    const QStringList lines = QString::fromUtf8(file.read(kMostHosts)).split(u'\n');
    for (const QString &line : lines) {
        const QStringList words = line.section(u'#', 0, 0).simplified().split(u' ');
        if (words.sliced(1).contains(name, Qt::CaseInsensitive))
            addresses.append(words.first());
    }
    return addresses;
}

QStringList addressesOf(const QString &host, const QString &hostsFile)
{
    if (isLoopback(host))
        return {host};
    QStringList listed = listedAddresses(host, hostsFile);
    const bool isLocal = host == "localhost"_L1 || host.endsWith(".localhost"_L1);
    if (listed.isEmpty() && isLocal)
        return {kLoopback4, kLoopback6};
    return listed;
}

} // namespace

Outcome<QList<LoopbackServer>> loopbackServers(const QString &base, const QString &hostsFile)
{
    QUrl url(base, QUrl::StrictMode);
    if (!url.isValid() || url.scheme() != "http"_L1 || url.host().isEmpty()
        || !url.userInfo().isEmpty() || url.hasQuery() || url.hasFragment())
        return Failure{u"%1 is no address of the form http://127.0.0.1:8080/v1"_s.arg(base)};
    while (url.path().endsWith(u'/'))
        url.setPath(url.path().chopped(1));

    const QStringList addresses = addressesOf(url.host(), hostsFile);
    const bool isHere = std::ranges::all_of(addresses, isLoopback);
    if (addresses.isEmpty() || !isHere)
        return Failure{u"%1 is not on this machine"_s.arg(url.toDisplayString())};
    QList<LoopbackServer> servers;
    for (const QString &address : addresses)
        servers.append({url, address});
    return servers;
}

} // namespace dugwise
