// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// The state of one data source.
RowLayout {
    id: root

    required property string symbol
    required property string name
    required property bool isActive
    required property string status

    spacing: 6
    Accessible.role: Accessible.StaticText
    Accessible.name: name + ": " + status

    Item {
        Layout.preferredWidth: 16
        implicitHeight: Theme.callout * 1.6

        Symbol {
            anchors.centerIn: parent
            name: root.symbol
            size: Theme.callout
            color: root.isActive ? Theme.accent : Theme.faded(Theme.secondary, 0.4)
        }
    }
    PlainLabel {
        Layout.fillWidth: true
        text: root.name
        font.pixelSize: Theme.callout
    }
    PlainLabel {
        text: root.status
        color: root.isActive ? Theme.secondary : Theme.tertiary
        font.pixelSize: Theme.caption2
    }
    Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: root.isActive ? Theme.green : Theme.orange
    }
}
