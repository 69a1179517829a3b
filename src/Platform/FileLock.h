// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/FileDescriptor.h"

#include <QString>

#include <chrono>
#include <optional>

namespace dugwise {

/// A lock between processes, held as long as the object lives; the system drops it when the
/// process dies (flock(2)).
class FileLock
{
public:
    enum class State {
        held,
        heldByAnother,
        impossible, ///< the lock's file cannot be made here
    };

    FileLock() = default;
    /// Tries once, without waiting.
    explicit FileLock(const QString &path);
    /// Of the folder itself, so that no file is left; waits for `patience` at most.
    [[nodiscard]] static FileLock ofFolder(const QString &path, std::chrono::milliseconds patience);

    [[nodiscard]] State state() const { return m_state; }

private:
    void lock();

    FileDescriptor m_file;
    State m_state = State::impossible;
};

} // namespace dugwise
