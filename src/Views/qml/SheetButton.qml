// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls
import Dugwise

/// One of the answers to a question; the filled one is the answer that carries on.
AbstractButton {
    id: root

    property bool isFilled: false

    leftPadding: 16
    rightPadding: 16
    topPadding: 8
    bottomPadding: 8
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    contentItem: PlainLabel {
        text: root.text
        color: root.isFilled ? Theme.accentInk : Theme.primary
        font.pixelSize: Theme.callout
        font.weight: root.isFilled ? Font.DemiBold : Font.Normal
        horizontalAlignment: Text.AlignHCenter
    }
    background: Rectangle {
        radius: 8
        color: root.isFilled ? Theme.accent : Theme.faded(Theme.gray, root.hovered ? 0.2 : 0.12)
        opacity: root.pressed ? 0.7 : root.isFilled && root.hovered ? 0.9 : 1

        FocusRing {
            anchors.margins: -4
            radius: 11
            control: root
        }
    }
}
