// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// A file that was found: press it to select it, or use its two buttons.
BaseButton {
    id: root

    required property int index
    required property int number
    required property bool isSelected
    required property bool isFirst
    required property string name
    required property string symbol
    required property string colorName
    required property string typeName
    required property bool isSemantic
    required property string date
    required property string size
    required property string folder
    required property string host
    required property string summary

    signal opened()
    signal revealed()

    leftPadding: 32 + 12
    rightPadding: 60 + 12
    topPadding: gap + 12
    bottomPadding: 12
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    opacity: Math.min(1, motion.value)
    transform: Translate { y: 12 * (1 - motion.value) }
    Accessible.role: Accessible.ListItem
    Accessible.name: "#" + number + " " + name + ", " + typeName + ", " + summary
    Accessible.selected: isSelected

    readonly property real gap: isFirst ? 10 : 8

    SpringMotion {
        id: motion

        response: 0.5
        dampingFraction: 0.7
        delay: root.number * 0.08
        running: true
    }

    containmentMask: ground
    background: Item {
        CardGround {
            id: ground

            /// At each side, of its size. It is not scaled: corners of whole pixels have no seams.
            property real growth: root.hovered ? 0.005 : 0
            readonly property real growthAcross: Math.round(growth * parent.width)
            readonly property real growthDown: Math.round(growth * parent.height)

            x: 32 - growthAcross
            y: root.gap - growthDown
            width: parent.width - 32 - 60 + 2 * growthAcross
            height: parent.height - root.gap + 2 * growthDown
            line: root.isSelected ? Theme.accent : Theme.faded(Theme.secondary, 0.15)
            lineWidth: root.isSelected ? 1.5 : 1
            isRaised: root.hovered

            Behavior on growth { NumberAnimation { duration: 150; easing.type: Easing.OutQuad } }
            FocusRing { control: root; radius: 14 }
        }
    }

    contentItem: RowLayout {
        spacing: 12

        SymbolTile {
            Layout.alignment: Qt.AlignTop
            implicitWidth: 40
            implicitHeight: 40
            symbol: root.symbol
            ink: Theme.named(root.colorName)
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 4

            RowLayout {
                spacing: 6

                Rectangle {
                    visible: root.number >= 1
                    implicitWidth: Math.max(22, numberLabel.implicitWidth + 8)
                    implicitHeight: Math.max(18, numberLabel.implicitHeight)
                    radius: 4
                    color: Theme.accent

                    PlainLabel {
                        id: numberLabel

                        anchors.centerIn: parent
                        text: "#" + root.number
                        color: Theme.accentInk
                        font.pixelSize: Theme.caption2
                        font.bold: true
                    }
                }
                PlainLabel {
                    Layout.fillWidth: true
                    text: root.name
                    font.pixelSize: Theme.callout
                    font.weight: Font.Medium
                    elide: Text.ElideMiddle
                }
            }
            Flow {
                Layout.fillWidth: true
                spacing: 6

                Capsule {
                    id: typeBadge

                    text: root.typeName
                    textSize: Theme.caption
                    verticalPadding: 2
                    ground: Theme.faded(Theme.accent, 0.1)
                }
                Capsule {
                    objectName: "semantic"
                    visible: root.isSemantic
                    text: "AI Match"
                    ink: Theme.purple
                    horizontalPadding: 5
                    verticalPadding: 2
                }
                PlainLabel {
                    height: typeBadge.height
                    verticalAlignment: Text.AlignVCenter
                    text: root.date
                    color: Theme.secondary
                    font.pixelSize: Theme.caption
                }
                PlainLabel {
                    height: typeBadge.height
                    verticalAlignment: Text.AlignVCenter
                    text: root.size
                    color: Theme.tertiary
                    font.pixelSize: Theme.caption
                }
            }
            PlainLabel {
                Layout.fillWidth: true
                text: root.folder
                color: Theme.tertiary
                font.pixelSize: Theme.caption2
                elide: Text.ElideMiddle
            }
            RowLayout {
                visible: root.host !== ""
                spacing: 3

                Symbol {
                    name: "arrow.down.circle"
                    size: Theme.caption2
                    color: Theme.faded(Theme.blue, 0.8)
                }
                PlainLabel {
                    Layout.fillWidth: true
                    objectName: "download"
                    text: "Downloaded from " + root.host
                    color: Theme.faded(Theme.blue, 0.8)
                    font.pixelSize: Theme.caption2
                }
            }
            PlainLabel {
                Layout.fillWidth: true
                text: root.summary
                color: Theme.secondary
                font.pixelSize: Theme.caption
                wrapMode: Text.Wrap
                maximumLineCount: 2
                elide: Text.ElideRight
            }
        }
        ColumnLayout {
            Layout.alignment: Qt.AlignVCenter
            spacing: 6

            PlainButton {
                objectName: "open"
                symbol: "arrow.up.forward.square"
                symbolSize: Theme.callout * 1.2
                tip: "Open File"
                onClicked: root.opened()
            }
            PlainButton {
                objectName: "reveal"
                symbol: "folder"
                symbolSize: Theme.callout * 1.2
                tint: Theme.secondary
                tip: "Reveal in Finder"
                onClicked: root.revealed()
            }
        }
    }
}
