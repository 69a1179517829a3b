// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// What the part of the panel below it holds.
PlainLabel {
    color: Theme.secondary
    font.pixelSize: Theme.caption
    font.weight: Font.DemiBold
    wrapMode: Text.Wrap
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
