// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// A badge whose text goes on in a new line where it would be too wide.
Rectangle {
    id: root

    required property real mostWidth
    property string symbol
    property real symbolSize: textSize
    property string text
    property color ink: Theme.primary
    property real textSize: Theme.caption
    property int textWeight: Font.Normal
    property real horizontalPadding: 8
    property real verticalPadding: 4

    implicitWidth: row.implicitWidth + 2 * horizontalPadding
    implicitHeight: row.implicitHeight + 2 * verticalPadding
    radius: Math.min(height / 2, textSize + verticalPadding)
    color: Theme.faded(Theme.accent, 0.08)
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 4

        Symbol {
            id: icon

            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol !== ""
            name: root.symbol
            size: root.symbolSize
            color: root.ink
        }
        PlainLabel {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(Math.ceil(implicitWidth), root.mostWidth - 2 * root.horizontalPadding
                                                      - (icon.visible ? icon.width + row.spacing : 0))
            text: root.text
            color: root.ink
            font.pixelSize: root.textSize
            font.weight: root.textWeight
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            Accessible.ignored: true
        }
    }
}
