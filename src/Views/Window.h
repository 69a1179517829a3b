// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Session.h"

#include <QQmlApplicationEngine>

class QQuickWindow;

namespace dugwise {

/// The application's one window.
class Window
{
public:
    /// `session` outlives the window.
    explicit Window(Session &session);

    /// Whether it could be made.
    [[nodiscard]] bool isOpen() const { return view() != nullptr; }
    /// Null when it could not be made.
    [[nodiscard]] QQuickWindow *view() const;

    /// Brings it to the front, as far as the desktop lets it. On Wayland that takes the
    /// `activationToken` which the desktop gave to whoever asks for it; it may be empty.
    void raise(const QString &activationToken);

private:
    QQmlApplicationEngine m_engine;
};

} // namespace dugwise
