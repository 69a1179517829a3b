// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QQmlEngine;

namespace dugwise {

/// Gives an engine the images that the views ask for: image://symbol and image://shadow.
void addImageProviders(QQmlEngine &engine);

} // namespace dugwise
