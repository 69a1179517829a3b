// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Utilities/Outcome.h"

#include <QList>
#include <QUrl>

namespace dugwise {

/// A web server on this machine: the address at which people know it, and the one to connect to.
struct LoopbackServer
{
    QUrl base;       ///< without a slash at its end
    QString address; ///< of IPv4 or IPv6, in digits

    bool operator==(const LoopbackServer &) const = default;
};

/// The addresses of the server at `base`, one or more, in the order in which to try them. Fails
/// unless each is a loopback address. A name is looked up in the hosts file (hosts(5)) alone, since
/// asking a name service would tell another machine of it; "localhost" and names below it are this
/// machine's own (RFC 6761).
[[nodiscard]] Outcome<QList<LoopbackServer>>
loopbackServers(const QString &base, const QString &hostsFile = QStringLiteral("/etc/hosts"));

} // namespace dugwise
