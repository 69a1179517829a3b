// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// One thing's state at a glance.
Rectangle {
    id: root

    required property string symbol
    required property string label
    required property string value
    required property color tint

    Layout.fillWidth: true
    Layout.fillHeight: true
    Layout.preferredWidth: 1 // all as wide as one another
    implicitHeight: column.implicitHeight + 24
    radius: 10
    color: Theme.faded(tint, 0.06)
    border.width: 1
    border.color: Theme.faded(tint, 0.15)
    Accessible.role: Accessible.StaticText
    Accessible.name: label + ": " + value

    Column {
        id: column

        anchors.verticalCenter: parent.verticalCenter
        x: 4
        width: parent.width - 8
        spacing: 4

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: root.symbol
            size: Math.round(Theme.title3 * 1.2)
            color: root.tint
        }
        PlainLabel {
            width: parent.width
            text: root.value
            font.pixelSize: Theme.caption
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            Accessible.ignored: true
        }
        PlainLabel {
            width: parent.width
            text: root.label
            color: Theme.secondary
            font.pixelSize: Theme.caption2
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            Accessible.ignored: true
        }
    }
}
