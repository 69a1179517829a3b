// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SystemAppearance.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace dugwise {

SystemAppearance::SystemAppearance(DesktopAppearance *desktop, QObject *parent)
    : QObject(parent)
    , m_desktop(desktop)
{
    QCoreApplication::instance()->installEventFilter(this);
    if (!m_desktop)
        return;
    m_desktop->start([this](const Appearance &appearance) {
        m_appearance = appearance;
        Q_EMIT changed();
    });
}

SystemAppearance::~SystemAppearance()
{
    if (m_desktop)
        m_desktop->cancel();
}

bool SystemAppearance::eventFilter(QObject * /*object*/, QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange)
        Q_EMIT changed();
    return false;
}

bool SystemAppearance::isDark() const
{
    const QColor window = QGuiApplication::palette().color(QPalette::Window);
    return m_appearance.isDark.value_or(window.lightness() < 128);
}

} // namespace dugwise
