// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// A label and its value: side by side, or under one another where that is too narrow.
GridLayout {
    id: root

    required property string label
    required property string value
    readonly property real labelWidth: 130 * Theme.textScale

    Layout.fillWidth: true
    columns: width < 2.2 * labelWidth ? 1 : 2
    columnSpacing: 8
    rowSpacing: 0
    Accessible.role: Accessible.StaticText
    Accessible.name: label + ": " + value

    PlainLabel {
        Layout.preferredWidth: root.labelWidth
        Layout.alignment: Qt.AlignTop
        text: root.label
        color: Theme.secondary
        font.pixelSize: Theme.caption
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }
    PlainLabel {
        Layout.fillWidth: true
        text: root.value
        font.pixelSize: Theme.caption
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }
}
