// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QProcessEnvironment>
#include <QStringList>

#include <optional>
#include <stop_token>

namespace dugwise {

/// All that a program prints on standard output until it exits, whatever its exit code. Standard
/// input is empty and standard error discarded; the arguments go to it as they are, through no
/// shell. Absent when the program cannot be started, and when `stop` is requested, on this thread:
/// the program is killed then, as it is when this process ends.
[[nodiscard]] QCoro::Task<std::optional<QByteArray>>
programOutput(QString program,
              QStringList arguments,
              std::stop_token stop,
              QProcessEnvironment environment = QProcessEnvironment::systemEnvironment());

} // namespace dugwise
