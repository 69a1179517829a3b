// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FileDescriptor.h"
#include "Platform/NetworkPathMonitor.h"

#include <QSocketNotifier>
#include <QTimer>

#include <memory>
#include <optional>

namespace dugwise {

/// Finds the path anew whenever the kernel tells of a change of interfaces, addresses or routes.
class RouteMonitor final : public NetworkPathMonitor
{
public:
    /// `sysfs` has a folder for each network interface.
    explicit RouteMonitor(QString sysfs);

    void start(UpdateHandler updateHandler) override;
    void cancel() override;

private:
    void update();

    QString m_sysfs;
    UpdateHandler m_updateHandler;
    std::optional<NetworkPath> m_path; ///< the last that was handed over
    FileDescriptor m_socket;
    std::unique_ptr<QSocketNotifier> m_changes;
    QTimer m_timer;
};

} // namespace dugwise
