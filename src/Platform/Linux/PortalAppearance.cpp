// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/PortalAppearance.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr auto kService = "org.freedesktop.portal.Desktop"_L1;
constexpr auto kPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto kInterface = "org.freedesktop.portal.Settings"_L1;

/// The desktops' own form: 1 is dark, 2 is light, all else is no preference
/// (org.freedesktop.appearance in the documentation of the portal).
std::optional<bool> darkOf(const QVariantMap &settings)
{
    const uint scheme = settings.value(u"org.freedesktop.appearance/color-scheme"_s).toUInt();
    if (scheme == 1 || scheme == 2)
        return scheme == 1;
    const QByteArray theme = qgetenv("GTK_THEME"); // NAME:dark chooses a theme's dark form
    if (theme.isEmpty())
        return std::nullopt;
    return theme.endsWith(":dark") || theme.endsWith("-dark");
}

Appearance appearanceOf(const QVariantMap &settings)
{
    const QVariant animates =
        settings.value(u"org.gnome.desktop.interface/enable-animations"_s, true);
    const QVariant duration =
        settings.value(u"org.kde.kdeglobals.KDE/AnimationDurationFactor"_s, 1.0);
    const double scale =
        settings.value(u"org.gnome.desktop.interface/text-scaling-factor"_s).toDouble();
    bool isNumber = false;
    const bool isInstant = duration.toDouble(&isNumber) == 0 && isNumber;
    return {.isDark = darkOf(settings),
            .reducesMotion = !animates.toBool() || isInstant,
            .textScale = std::isfinite(scale) && scale > 0 ? std::clamp(scale, 0.5, 3.0) : 1.0};
}

} // namespace

void PortalAppearance::start(UpdateHandler updateHandler)
{
    cancel();
    m_updateHandler = std::move(updateHandler);
    m_probe.start([this] { follow(); });
    QMetaObject::invokeMethod(
        this, [this] { update(); }, Qt::QueuedConnection);
}

void PortalAppearance::cancel()
{
    m_probe.cancel();
    m_updateHandler = {};
    m_settings.clear();
    m_appearance = Appearance();
}

void PortalAppearance::follow()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    // Unknown until then, and the slot with it: connecting would fail without a word.
    qRegisterMetaType<QDBusVariant>();
    qDBusRegisterMetaType<QMap<QString, QVariantMap>>();
    // Any sender's: to follow one by its name, Qt waits for the bus to tell who has it.
    bus.connect(QString(),
                kPath,
                kInterface,
                u"SettingChanged"_s,
                this,
                SLOT(changeSetting(QString, QString, QDBusVariant)));
    QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kInterface, u"ReadAll"_s);
    const QStringList groups{u"org.freedesktop.appearance"_s,
                             u"org.gnome.desktop.interface"_s,
                             u"org.kde.kdeglobals.KDE"_s};
    call.setArguments({groups});
    const QDBusPendingCall pending = bus.asyncCall(call);
    auto *const watcher = new QDBusPendingCallWatcher(pending, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QMap<QString, QVariantMap>> reply = *watcher;
        watcher->deleteLater();
        if (reply.isError())
            return;
        const QMap<QString, QVariantMap> all = reply.value();
        for (auto group = all.cbegin(); group != all.cend(); ++group) {
            for (auto it = group->cbegin(); it != group->cend(); ++it)
                m_settings.insert(group.key() + u'/' + it.key(), it.value());
        }
        update();
    });
}

void PortalAppearance::changeSetting(const QString &group,
                                     const QString &key,
                                     const QDBusVariant &value)
{
    m_settings.insert(group + u'/' + key, value.variant());
    update();
}

void PortalAppearance::update()
{
    const Appearance appearance = appearanceOf(m_settings);
    if (appearance == m_appearance || !m_updateHandler)
        return;
    m_appearance = appearance;
    const UpdateHandler handler = m_updateHandler; // it may cancel
    handler(appearance);
}

} // namespace dugwise
