// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/RoutedPath.h"

#include "Platform/Linux/InterfaceTypes.h"
#include "Platform/Linux/Netlink.h"

#include <algorithm>
#include <map>
#include <set>

namespace dugwise {

namespace {

using InterfaceTypes = NetworkPath::InterfaceTypes;

/// Interfaces that are up, by their numbers; with no types where sysfs tells none.
using TypesByInterface = std::map<int, InterfaceTypes>;

TypesByInterface
interfacesInUse(const QList<Route> &routes, const LinkLookup &linkOf, const QString &sysfs)
{
    std::set<int> numbers;
    for (const Route &route : routes)
        numbers.insert(route.interfaces.begin(), route.interfaces.end());
    TypesByInterface types;
    for (const int number : numbers) {
        const std::optional<NetworkLink> link = linkOf(number);
        if (link && link->isUp)
            types[number] = interfaceTypes(sysfs, link->name);
    }
    return types;
}

bool isBetter(const Route &one, const Route &other)
{
    return std::pair(one.isIPv6, one.metric) < std::pair(other.isIPv6, other.metric);
}

InterfaceTypes all(const TypesByInterface &types)
{
    InterfaceTypes all;
    for (const auto &[interface, type] : types)
        all |= type;
    return all;
}

/// What carries a tunnel; empty where it cannot be known.
InterfaceTypes carrier(const TypesByInterface &toSinglePlaces,
                       const QList<TypesByInterface> &defaults)
{
    TypesByInterface known = toSinglePlaces;
    std::erase_if(known, [](const auto &one) { return !one.second; });
    if (known.size() == 1)
        return all(known);
    for (const TypesByInterface &next : defaults) {
        if (const InterfaceTypes types = all(next))
            return types;
    }
    return {};
}

} // namespace

NetworkPath routedPath(const QList<Route> &routes, const LinkLookup &linkOf, const QString &sysfs)
{
    const TypesByInterface inUse = interfacesInUse(routes, linkOf, sysfs);
    QList<Route> sorted = routes;
    std::ranges::stable_sort(sorted, isBetter);
    QList<TypesByInterface> defaults;
    TypesByInterface toSinglePlaces;
    for (const Route &route : sorted) {
        TypesByInterface types;
        for (const int interface : route.interfaces) {
            if (const auto at = inUse.find(interface); at != inUse.end())
                types.insert(*at);
        }
        if (!route.isDefault)
            toSinglePlaces.merge(types);
        else if (!types.empty())
            defaults.append(types);
    }
    if (defaults.isEmpty())
        return {};
    InterfaceTypes types = all(defaults.first());
    if (!types)
        types = carrier(toSinglePlaces, defaults);
    if (!types)
        types = NetworkPath::InterfaceType::other;
    return {.isSatisfied = true, .interfaceTypes = types};
}

NetworkPath currentPath(const QString &sysfs)
{
    const FileDescriptor socket = Netlink::open();
    if (!socket)
        return {};
    const auto linkOf = [&socket](int interface) { return readLink(socket, interface); };
    return routedPath(readRoutes(socket), linkOf, sysfs);
}

} // namespace dugwise
