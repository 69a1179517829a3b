// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFlags>

#include <functional>

namespace dugwise {

/// The way that traffic to the outside would take now.
struct NetworkPath
{
    enum class InterfaceType {
        wifi = 1,
        cellular = 2,
        wiredEthernet = 4,
        other = 8,
    };
    Q_DECLARE_FLAGS(InterfaceTypes, InterfaceType)

    bool isSatisfied = false;      ///< there is such a way
    InterfaceTypes interfaceTypes; ///< of the interfaces on it

    [[nodiscard]] bool usesInterfaceType(InterfaceType type) const
    {
        return interfaceTypes.testFlag(type);
    }
    bool operator==(const NetworkPath &) const = default;
};
Q_DECLARE_OPERATORS_FOR_FLAGS(NetworkPath::InterfaceTypes)

/// Follows the system's network path, over all interfaces.
class NetworkPathMonitor
{
public:
    using UpdateHandler = std::function<void(const NetworkPath &path)>;

    NetworkPathMonitor() = default;
    Q_DISABLE_COPY_MOVE(NetworkPathMonitor)
    virtual ~NetworkPathMonitor() = default;

    /// Calls the handler from the event loop of this thread: soon with the path as it is, then with
    /// each other one, until cancel(). A path that cannot be found out is not satisfied.
    virtual void start(UpdateHandler updateHandler) = 0;
    virtual void cancel() = 0;
};

} // namespace dugwise
