// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls
import Dugwise

/// A button with a frame: an icon and a text, which wraps where the button may not be as wide.
AbstractButton {
    id: root

    property string symbol
    property color tint: Theme.primary
    property real textSize: Theme.callout
    property real mostWidth: Infinity
    readonly property real symbolSize: textSize * 1.1

    leftPadding: 10
    rightPadding: 10
    topPadding: 5
    bottomPadding: 5
    implicitWidth: Math.min(mostWidth, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    opacity: enabled ? 1 : 0.5
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    contentItem: Row {
        spacing: 6

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: root.symbol
            size: root.symbolSize
            color: root.tint
        }
        PlainLabel {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, root.mostWidth - root.symbolSize - 6
                                           - root.leftPadding - root.rightPadding)
            text: root.text
            color: root.tint
            font.pixelSize: root.textSize
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: 6
        color: root.pressed ? Theme.faded(Theme.gray, 0.25)
                            : root.hovered ? Theme.faded(Theme.gray, 0.12) : Theme.controlBackground
        border.width: 1
        border.color: Theme.faded(Theme.secondary, 0.3)

        FocusRing { control: root }
    }
}
