// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHashFunctions>

#include <compare>
#include <ctime>

namespace dugwise {

/// An absolute moment: seconds, with fraction, since 2001-01-01 00:00:00 UTC.
struct Instant
{
    double seconds = 0;

    /// 2001-01-01 00:00:00 UTC, counted from the Unix epoch.
    static constexpr double kUnixOffset = 978307200;

    [[nodiscard]] static constexpr Instant fromUnix(double unixSeconds)
    {
        return {unixSeconds - kUnixOffset};
    }
    /// A time as statx(2) and clock_gettime(2) give it. Whole seconds are moved to the reference
    /// date before the fraction is added, which keeps more of the nanoseconds.
    [[nodiscard]] static constexpr Instant fromUnix(std::time_t unixSeconds, long nanoseconds)
    {
        const auto whole = static_cast<double>(unixSeconds) - kUnixOffset;
        return {whole + static_cast<double>(nanoseconds) * 1e-9};
    }
    [[nodiscard]] constexpr double unixSeconds() const { return seconds + kUnixOffset; }

    auto operator<=>(const Instant &) const = default;

    friend size_t qHash(const Instant &instant, size_t seed = 0)
    {
        return ::qHash(instant.seconds, seed);
    }
};

} // namespace dugwise
