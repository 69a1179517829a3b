// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FileLock.h"
#include "Views/WindowMessage.h"

#include <chrono>

namespace dugwise {

/// Keeps a person to one window a display: whoever holds the lock, as long as the object lives, has
/// the window, and listens at the socket beside it (WindowServer). Any other start hands over what
/// it was asked, and ends.
class SingleWindow
{
public:
    enum class Turn {
        ours,       ///< no window is open: this start opens it
        handedOver, ///< the window that is open has taken the message
        unanswered, ///< there is one, and it has not answered in time
    };

    /// `socketPath` as of windowSocketPath(). Without one, and where the lock cannot be made, each
    /// start has a window of its own, which nobody reaches.
    explicit SingleWindow(const QString &socketPath);

    /// Waits, for `patience` at most, until it is our turn or the message is handed over. For use
    /// before there is a window; needs a QCoreApplication.
    [[nodiscard]] Turn take(const WindowMessage &message, std::chrono::milliseconds patience);

    /// Where to listen; empty unless the lock is ours.
    [[nodiscard]] QString socketPath() const;

    /// Lets the next start have its window, when this one is closed.
    void release() { m_lock = FileLock(); }

private:
    QString m_socketPath;
    FileLock m_lock;
};

/// Where the window of this display is reached, in a folder made for it that is private to the
/// person: below $XDG_RUNTIME_DIR, else in `cache`. Empty where neither path is short enough for a
/// socket (unix(7)).
[[nodiscard]] QString windowSocketPath(const QString &cache);

} // namespace dugwise
