// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// A symbol, and beside it a title with a description below.
RowLayout {
    id: root

    required property string symbol
    required property string title
    required property string detail
    property color tint: Theme.accent
    property real symbolSize: Theme.callout
    /// Width of the frame that the symbol stands in the middle of, for text of the usual size.
    property real frameWidth: 20

    Layout.fillWidth: true
    spacing: 8
    Accessible.role: Accessible.StaticText
    Accessible.name: title + ": " + detail

    Item {
        Layout.alignment: Qt.AlignTop
        implicitWidth: Math.max(root.frameWidth * Theme.textScale, root.symbolSize)
        implicitHeight: Math.max(root.symbolSize, Theme.callout * 1.3)

        Symbol {
            anchors.centerIn: parent
            name: root.symbol
            size: root.symbolSize
            color: root.tint
        }
    }
    ColumnLayout {
        spacing: 2

        PlainLabel {
            Layout.fillWidth: true
            text: root.title
            font.pixelSize: Theme.callout
            font.weight: Font.Medium
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
        PlainLabel {
            Layout.fillWidth: true
            text: root.detail
            color: Theme.secondary
            font.pixelSize: Theme.caption
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
    }
}
