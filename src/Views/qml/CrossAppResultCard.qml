// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// A mail, a message or an event that was found.
Item {
    id: root

    required property bool isFirst
    required property string name
    required property string symbol
    required property string colorName
    required property string typeName
    required property string date
    required property string folder
    required property string summary

    readonly property real gap: isFirst ? 10 : 6
    readonly property color tint: Theme.named(colorName)

    implicitHeight: row.implicitHeight + 20 + gap
    opacity: Math.min(1, motion.value)
    transform: Translate { y: 10 * (1 - motion.value) }
    Accessible.role: Accessible.ListItem
    Accessible.name: typeName + ": " + name + ", " + folder + ", " + summary

    SpringMotion {
        id: motion

        response: 0.5
        dampingFraction: 0.7
        running: true
    }

    Rectangle {
        x: 32
        y: root.gap
        width: root.width - 32 - 60
        height: root.height - root.gap
        radius: 12
        color: Theme.controlBackground
        border.width: 1
        border.color: Theme.faded(root.tint, 0.2)

        RowLayout {
            id: row

            anchors.fill: parent
            anchors.margins: 10
            spacing: 10

            SymbolTile {
                Layout.alignment: Qt.AlignTop
                implicitWidth: 36
                implicitHeight: 36
                symbol: root.symbol
                symbolSize: Theme.callout
                ink: root.tint
            }
            ColumnLayout {
                Layout.fillWidth: true
                spacing: 3

                RowLayout {
                    PlainLabel {
                        Layout.fillWidth: true
                        text: root.name
                        font.pixelSize: Theme.callout
                        font.weight: Font.Medium
                    }
                    Capsule {
                        text: root.typeName
                        isBold: true
                        verticalPadding: 2
                        ink: Theme.accentInk
                        ground: root.tint
                    }
                }
                PlainLabel {
                    Layout.fillWidth: true
                    visible: root.folder !== ""
                    text: root.folder
                    color: Theme.secondary
                    font.pixelSize: Theme.caption
                }
                PlainLabel {
                    Layout.fillWidth: true
                    visible: root.summary !== ""
                    text: root.summary
                    color: Theme.tertiary
                    font.pixelSize: Theme.caption
                }
                PlainLabel {
                    text: root.date
                    color: Theme.tertiary
                    font.pixelSize: Theme.caption2
                }
            }
        }
    }
}
