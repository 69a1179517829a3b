// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

#include <optional>

namespace dugwise {

/// Where "now" comes from: the system's clock, or the instant that a test sets. Calendar steps
/// are taken in the process's local time zone.
class Clock
{
public:
    Clock() = default;
    explicit Clock(Instant fixed)
        : m_fixed(fixed)
    {}

    [[nodiscard]] Instant now() const;

private:
    std::optional<Instant> m_fixed;
};

} // namespace dugwise
