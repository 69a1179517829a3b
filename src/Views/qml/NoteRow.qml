// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// A small text with a symbol before it.
RowLayout {
    id: root

    required property string symbol
    required property string text
    property color tint: Theme.secondary

    Layout.fillWidth: true
    spacing: 6

    Symbol {
        Layout.alignment: Qt.AlignTop
        name: root.symbol
        size: Math.round(Theme.caption * 1.3)
        color: root.tint
    }
    PlainLabel {
        Layout.fillWidth: true
        text: root.text
        color: Theme.secondary
        font.pixelSize: Theme.caption
        wrapMode: Text.Wrap
    }
}
