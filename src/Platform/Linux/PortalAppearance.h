// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/DesktopAppearance.h"
#include "Platform/Linux/SessionBusProbe.h"

#include <QDBusVariant>
#include <QObject>
#include <QVariantMap>

namespace dugwise {

/// Reads the settings of the desktop portal (org.freedesktop.portal.Settings on the session bus)
/// and follows them. Without a bus or a portal that answers, there is only what GTK_THEME says.
class PortalAppearance final : public QObject, public DesktopAppearance
{
    Q_OBJECT

public:
    void start(UpdateHandler updateHandler) override;
    void cancel() override;

private Q_SLOTS:
    void changeSetting(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void follow();
    void update();

    SessionBusProbe m_probe;
    UpdateHandler m_updateHandler;
    QVariantMap m_settings;  ///< by GROUP/KEY
    Appearance m_appearance; ///< the last that was handed over
};

} // namespace dugwise
