// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// A row of the sidebar that can be pressed.
BaseButton {
    id: root

    required property string label
    required property string symbol
    property bool isCurrent: false

    x: 8
    width: parent.width - 16
    implicitHeight: Math.ceil(Theme.callout * 2)
    leftPadding: 8
    rightPadding: 8
    Accessible.name: label
    Accessible.selected: isCurrent

    contentItem: RowLayout {
        spacing: 8

        Symbol {
            name: root.symbol
            size: Theme.callout
            color: root.isCurrent ? Theme.accent : Theme.secondary
        }
        PlainLabel {
            Layout.fillWidth: true
            text: root.label
            font.pixelSize: Theme.callout
            font.weight: root.isCurrent ? Font.DemiBold : Font.Normal
        }
    }
    background: Rectangle {
        radius: 6
        color: root.isCurrent ? Theme.faded(Theme.accent, 0.16)
                              : Theme.faded(Theme.gray, root.hovered ? 0.12 : 0)

        FocusRing { control: root }
    }
}
