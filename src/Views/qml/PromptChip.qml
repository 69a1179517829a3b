// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// A request to try.
BaseButton {
    id: root

    leftPadding: 14
    rightPadding: 14
    topPadding: 10
    bottomPadding: 10
    implicitHeight: Math.max(implicitContentHeight, Theme.callout * 1.3) + topPadding + bottomPadding

    contentItem: RowLayout {
        spacing: 8

        Symbol {
            name: "sparkles"
            size: Theme.caption
            color: Theme.accent
        }
        PlainLabel {
            Layout.fillWidth: true
            text: root.text
            font.pixelSize: Theme.callout
            wrapMode: Text.Wrap
        }
    }
    background: Rectangle {
        radius: 8
        color: Theme.faded(Theme.accent, root.pressed ? 0.2 : root.hovered ? 0.14 : 0.08)
        border.width: 1
        border.color: Theme.faded(Theme.accent, 0.2)

        FocusRing { control: root }
    }
}
