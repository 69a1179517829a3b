// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoroTask>

#include <optional>

namespace dugwise {

/// What is read only after the person has said yes.
enum class PersonalData { calendar, contacts };

/// Asks the person whether something may be read. Lives on the UI thread.
class AccessPrompt
{
public:
    AccessPrompt() = default;
    Q_DISABLE_COPY_MOVE(AccessPrompt)
    virtual ~AccessPrompt() = default;

    /// The person's answer; absent when they cannot be asked or give none, which decides nothing.
    [[nodiscard]] virtual QCoro::Task<std::optional<bool>> ask(PersonalData data) = 0;
};

} // namespace dugwise
