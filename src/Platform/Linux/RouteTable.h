// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FileDescriptor.h"

#include <QByteArrayView>
#include <QList>
#include <QString>

#include <optional>

/// What the kernel's main route table says (rtnetlink(7)), as far as the way out goes.
namespace dugwise {

/// A way to every place, or through a gateway to a single one.
struct Route
{
    bool isIPv6 = false;
    bool isDefault = false; ///< to every place
    quint32 metric = 0;     ///< the lower, the better
    QList<int> interfaces;  ///< numbers of those in use, one or more
};

struct NetworkLink
{
    QString name;
    bool isUp = false; ///< switched on and joined to something at its other end
};

/// The route that a message's body tells; absent when it is of no use here, or malformed.
[[nodiscard]] std::optional<Route> parseRoute(QByteArrayView body);
[[nodiscard]] std::optional<NetworkLink> parseLink(QByteArrayView body);

/// Both ask the kernel over a netlink socket of no group.
[[nodiscard]] QList<Route> readRoutes(const FileDescriptor &socket);
[[nodiscard]] std::optional<NetworkLink> readLink(const FileDescriptor &socket, int interface);

} // namespace dugwise
