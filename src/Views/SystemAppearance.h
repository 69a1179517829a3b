// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/DesktopAppearance.h"

#include <QObject>
#include <QtQmlIntegration>

namespace dugwise {

/// The desktop's wishes as the views follow them.
class SystemAppearance final : public QObject
{
    Q_OBJECT
    QML_ANONYMOUS
    /// Where the desktop leaves it open, whether the application's palette is a dark one.
    Q_PROPERTY(bool isDark READ isDark NOTIFY changed)
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY changed)
    Q_PROPERTY(double textScale READ textScale NOTIFY changed)

public:
    /// `desktop`, which may be null, outlives this.
    explicit SystemAppearance(DesktopAppearance *desktop, QObject *parent = nullptr);
    Q_DISABLE_COPY_MOVE(SystemAppearance)
    ~SystemAppearance() override;

    [[nodiscard]] bool isDark() const;
    [[nodiscard]] bool reducesMotion() const { return m_appearance.reducesMotion; }
    [[nodiscard]] double textScale() const { return m_appearance.textScale; }

Q_SIGNALS:
    void changed();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    DesktopAppearance *m_desktop;
    Appearance m_appearance;
};

} // namespace dugwise
