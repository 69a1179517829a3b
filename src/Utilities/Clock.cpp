// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utilities/Clock.h"

#include <ctime>

namespace dugwise {

Instant Clock::now() const
{
    if (m_fixed)
        return *m_fixed;
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    return Instant::fromUnix(time.tv_sec, time.tv_nsec);
}

} // namespace dugwise
