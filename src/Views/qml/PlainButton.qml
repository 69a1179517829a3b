// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls
import Dugwise

/// A button without a frame: an icon, a text or both. The text wraps where the button may not be as
/// wide.
BaseButton {
    id: root

    property string symbol
    property real symbolSize: Theme.callout
    property color tint: Theme.accent
    property color textColor: tint
    property real textSize: Theme.callout
    property string tip
    property real mostWidth: Infinity

    padding: 4
    implicitWidth: Math.min(mostWidth, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    opacity: enabled ? (pressed ? 0.6 : 1) : 0.5
    Accessible.name: text !== "" ? text : tip

    ToolTip.text: root.tip
    ToolTip.visible: root.tip !== "" && root.hovered
    ToolTip.delay: 600

    contentItem: Row {
        spacing: 6

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol !== ""
            name: root.symbol
            size: root.symbolSize
            color: root.tint
        }
        PlainLabel {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.text !== ""
            width: Math.min(implicitWidth, root.mostWidth - x - root.leftPadding - root.rightPadding)
            text: root.text
            color: root.textColor
            font.pixelSize: root.textSize
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: 6
        color: Theme.faded(Theme.gray, root.hovered ? 0.12 : 0)

        FocusRing { control: root }
    }
}
