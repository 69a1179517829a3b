// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// Title of a section of the sidebar.
PlainLabel {
    leftPadding: 16
    rightPadding: 16
    topPadding: 12
    bottomPadding: 2
    width: parent.width
    color: Theme.tertiary
    font.pixelSize: Theme.caption2
    font.weight: Font.DemiBold
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
