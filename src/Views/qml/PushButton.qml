// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// A button with a ground of its own.
PlainButton {
    id: root

    /// Whether its ground is full of its colour: for what carries on, or cannot be taken back.
    property bool isFilled: false

    leftPadding: 12
    rightPadding: 12
    topPadding: 6
    bottomPadding: 6
    textColor: isFilled ? Theme.accentInk : tint

    background: Rectangle {
        radius: 7
        color: root.isFilled ? Qt.darker(root.tint, root.hovered ? 1.15 : 1)
                           : Theme.faded(root.tint, root.hovered ? 0.16 : 0.08)
        border.width: root.isFilled ? 0 : 1
        border.color: Theme.faded(root.tint, 0.25)

        FocusRing { control: root }
    }
}
