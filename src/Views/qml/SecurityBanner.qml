// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// The promise that nothing leaves the machine.
Rectangle {
    id: root

    required property bool isOnline
    readonly property color networkColor: isOnline ? Theme.blue : Theme.green

    implicitHeight: row.implicitHeight + 20
    radius: 8
    color: Theme.faded(Theme.green, 0.06)
    border.width: 1
    border.color: Theme.faded(Theme.green, 0.15)

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: 16
        anchors.rightMargin: 16
        spacing: 10

        Symbol {
            name: "lock.shield.fill"
            size: Theme.callout * 1.4
            color: Theme.green
        }
        ColumnLayout {
            spacing: 2

            PlainLabel {
                text: "100% Local & Private"
                font.pixelSize: Theme.caption
                font.weight: Font.DemiBold
            }
            PlainLabel {
                Layout.fillWidth: true
                text: "On-device AI. No cloud. No tracking. Your files never leave your Mac."
                color: Theme.secondary
                font.pixelSize: Theme.caption2
                wrapMode: Text.Wrap
            }
            Row {
                spacing: 5

                Rectangle {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 5
                    height: 5
                    radius: 2.5
                    color: root.networkColor
                }
                PlainLabel {
                    text: root.isOnline ? "Online • Zero data sent" : "Offline • Fully local"
                    color: root.networkColor
                    font.pixelSize: Theme.caption2
                }
            }
        }
    }
}
