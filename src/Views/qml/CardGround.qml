// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// Ground of a card, with a shadow that deepens under the pointer.
Item {
    id: root

    property color line: Theme.faded(Theme.secondary, 0.15)
    property real lineWidth: 1
    property bool isRaised: false

    Shadow {
        anchors.fill: parent
        radius: 12
        blur: 2
        offset: 1
        opacity: root.isRaised ? 0 : 0.05

        Behavior on opacity { NumberAnimation { duration: 150; easing.type: Easing.OutQuad } }
    }
    Shadow {
        anchors.fill: parent
        radius: 12
        blur: 6
        offset: 2
        opacity: root.isRaised ? 0.1 : 0

        Behavior on opacity { NumberAnimation { duration: 150; easing.type: Easing.OutQuad } }
    }
    Rectangle {
        anchors.fill: parent
        radius: 12
        color: Theme.controlBackground
        border.width: Theme.inPixels(root.lineWidth, Screen.devicePixelRatio)
        border.color: root.line
    }
}
