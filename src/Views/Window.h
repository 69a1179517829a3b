// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Session.h"

#include <QQmlApplicationEngine>

namespace dugwise {

/// The application's one window.
class Window
{
public:
    /// `session` outlives the window.
    explicit Window(Session &session);

    /// Whether it could be made.
    [[nodiscard]] bool isOpen() const { return !m_engine.rootObjects().isEmpty(); }

private:
    QQmlApplicationEngine m_engine;
};

} // namespace dugwise
