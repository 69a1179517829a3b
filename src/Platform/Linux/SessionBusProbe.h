// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FileDescriptor.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace dugwise {

/// Whether the session bus is there and answers before the deadline; waits for it.
[[nodiscard]] bool sessionBusAnswers(const QDeadlineTimer &deadline);

/// Finds out without waiting whether the session bus is there and answers. Qt's own connection
/// waits for as long as a bus that hangs does, and so does the end of a program that has asked for
/// it.
class SessionBusProbe final : public QObject
{
public:
    /// Calls the handler once from the event loop when the bus has answered, and never when it does
    /// not; a bus without a socket in the file system or of an abstract name is none.
    void start(std::function<void()> whenAnswered);
    void cancel();

private:
    FileDescriptor m_socket;
    std::unique_ptr<QSocketNotifier> m_answer;
};

} // namespace dugwise
