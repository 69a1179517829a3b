// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QQmlEngine;

namespace dugwise {

/// Has every request of the views answered with nothing: what they show is on this machine.
void denyNetwork(QQmlEngine &engine);

} // namespace dugwise
