// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import Dugwise

/// Whether a data source takes part.
Capsule {
    property bool isActive: false

    ink: isActive ? Theme.accent : Theme.faded(Theme.secondary, 0.5)
    ground: isActive ? Theme.faded(Theme.accent, 0.1) : Theme.faded(Theme.secondary, 0.05)
}
