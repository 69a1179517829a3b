// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <functional>
#include <optional>

namespace dugwise {

/// How the person wants programs to look.
struct Appearance
{
    std::optional<bool> isDark; ///< absent when the desktop leaves it to the program
    bool reducesMotion = false; ///< animations are not wanted
    double textScale = 1;       ///< how much larger than usual text is, from 0.5 to 3

    bool operator==(const Appearance &) const = default;
};

/// Follows the desktop's settings of how programs look.
class DesktopAppearance
{
public:
    using UpdateHandler = std::function<void(const Appearance &appearance)>;

    DesktopAppearance() = default;
    Q_DISABLE_COPY_MOVE(DesktopAppearance)
    virtual ~DesktopAppearance() = default;

    /// Calls the handler from the event loop of this thread with each appearance other than the one
    /// before, until cancel(); the first is a default one, and the handler is not told of it.
    virtual void start(UpdateHandler updateHandler) = 0;
    virtual void cancel() = 0;
};

} // namespace dugwise
