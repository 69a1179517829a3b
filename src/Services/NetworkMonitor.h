// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLatin1StringView>
#include <QObject>
#include <QString>

namespace dugwise {

struct NetworkPath;
class NetworkPathMonitor;

/// Knows whether this machine is online and over what, for the views to tell; nothing is ever sent.
/// Lives on the UI thread, where all of its state changes.
class NetworkMonitor : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isConnected READ isConnected NOTIFY isConnectedChanged)
    Q_PROPERTY(QString connectionType READ connectionType NOTIFY connectionTypeChanged)

public:
    /// The connectionType() before the first path is known.
    static constexpr QLatin1StringView kUnknown{"Unknown"};

    /// Starts `monitor`, which outlives this object and is its own; without one nothing is known.
    explicit NetworkMonitor(NetworkPathMonitor *monitor, QObject *parent = nullptr);
    Q_DISABLE_COPY_MOVE(NetworkMonitor)
    ~NetworkMonitor() override;

    [[nodiscard]] bool isConnected() const { return m_isConnected; }
    /// "Wi-Fi", "Cellular", "Ethernet" or "None", or kUnknown.
    [[nodiscard]] QString connectionType() const { return m_connectionType; }

Q_SIGNALS:
    void isConnectedChanged();
    void connectionTypeChanged();

private:
    void update(const NetworkPath &path);

    NetworkPathMonitor *m_monitor;
    bool m_isConnected = false;
    QString m_connectionType;
};

} // namespace dugwise
