// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/InterfaceTypes.h"

#include <QDir>
#include <QFile>

#include <net/if_arp.h>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

using InterfaceType = NetworkPath::InterfaceType;

constexpr qint64 kMostBytes = 4096; // no attribute of sysfs has more
constexpr qsizetype kMostInterfaces = 64;
constexpr QLatin1StringView kLower{"lower_"};

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(kMostBytes).trimmed() : QByteArray();
}

bool exists(const QString &path)
{
    return QFile::exists(path);
}

/// The kind that the driver gives the interface, such as "wlan"; most give none.
QByteArray deviceType(const QString &folder)
{
    constexpr QByteArrayView kKey("DEVTYPE=");
    for (const QByteArray &line : content(folder + "/uevent"_L1).split('\n')) {
        if (line.startsWith(kKey))
            return line.sliced(kKey.size());
    }
    return {};
}

/// The interfaces that this one stands on. Of a bond in which one of them works and the others
/// wait, it is that one.
QStringList lowerInterfaces(const QString &folder)
{
    const QByteArray active = content(folder + "/bonding/active_slave"_L1);
    if (!active.isEmpty())
        return {QString::fromUtf8(active)};
    QStringList names;
    // Without a name filter, which would be a regular expression, compiled each time.
    for (const QString &entry : QDir(folder).entryList(QDir::AllEntries | QDir::System)) {
        if (entry.startsWith(kLower))
            names.append(entry.sliced(kLower.size()));
    }
    return names;
}

/// What an interface is that is no device and stands on no other; empty when it only passes on.
NetworkPath::InterfaceTypes ownType(const QString &folder, const QByteArray &deviceType)
{
    const bool passesOn = deviceType == "bridge" || deviceType == "bond" || deviceType == "vxlan"
                          || deviceType == "geneve" || exists(folder + "/tun_flags"_L1);
    if (passesOn || content(folder + "/type"_L1).toInt() != ARPHRD_ETHER)
        return {};
    return InterfaceType::wiredEthernet;
}

/// What a device is.
InterfaceType typeOfDevice(const QString &folder, const QByteArray &deviceType)
{
    const bool isEthernet = content(folder + "/type"_L1).toInt() == ARPHRD_ETHER;
    return isEthernet && deviceType != "bluetooth" ? InterfaceType::wiredEthernet
                                                   : InterfaceType::other;
}

} // namespace

NetworkPath::InterfaceTypes interfaceTypes(const QString &sysfs, const QString &name)
{
    NetworkPath::InterfaceTypes types;
    QStringList names{name}; // each looked at once, however they stand on one another
    for (qsizetype i = 0; i < std::min(names.size(), kMostInterfaces); ++i) {
        const QString folder = sysfs + u'/' + names.at(i);
        const QByteArray type = deviceType(folder);
        if (type == "wlan" || exists(folder + "/phy80211"_L1) || exists(folder + "/wireless"_L1)) {
            types |= InterfaceType::wifi;
        } else if (type == "wwan") {
            types |= InterfaceType::cellular;
        } else if (exists(folder + "/device"_L1)) {
            types |= typeOfDevice(folder, type);
        } else if (const QStringList lower = lowerInterfaces(folder); !lower.isEmpty()) {
            for (const QString &one : lower) {
                if (!names.contains(one))
                    names.append(one);
            }
        } else {
            types |= ownType(folder, type);
        }
    }
    return types;
}

} // namespace dugwise
