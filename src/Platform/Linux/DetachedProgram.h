// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QObject;

namespace dugwise {

/// Starts a program that goes on by itself, also when this one ends: in a session of its own, with
/// nothing to read and nowhere to write to, the argument as it is. Takes a fraction of a
/// millisecond whatever this process holds, since nothing is copied for it (posix_spawn(3)).
/// `keeper` takes its end to notice while it lives. False when it cannot be started.
bool startDetached(const QString &program, const QString &argument, QObject *keeper);

} // namespace dugwise
