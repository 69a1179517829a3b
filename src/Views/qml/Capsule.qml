// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// A small badge: an icon or a dot, and a label, on a rounded ground.
Rectangle {
    id: root

    property string symbol
    property color dot: "transparent"
    property string text
    property color ink: Theme.primary
    property color ground: Theme.faded(ink, 0.12)
    property bool isBold: false
    property real textSize: Theme.caption2
    property real horizontalPadding: 6
    property real verticalPadding: 3

    implicitWidth: row.implicitWidth + 2 * horizontalPadding
    implicitHeight: row.implicitHeight + 2 * verticalPadding
    radius: height / 2
    color: ground
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 3

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol !== ""
            name: root.symbol
            size: root.textSize
            color: root.ink
        }
        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.dot.a > 0
            width: 5
            height: 5
            radius: 2.5
            color: root.dot
        }
        PlainLabel {
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            color: root.ink
            font.pixelSize: root.textSize
            font.bold: root.isBold
            Accessible.ignored: true
        }
    }
}
