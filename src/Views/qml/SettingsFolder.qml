// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// An indexed folder, to be removed.
RowLayout {
    id: root

    required property string path

    signal removed()

    Layout.fillWidth: true
    spacing: 8
    Accessible.role: Accessible.ListItem
    Accessible.name: path

    Symbol {
        name: "folder.fill"
        size: Theme.callout
        color: Theme.accent
    }
    PlainLabel {
        Layout.fillWidth: true
        text: root.path
        font.pixelSize: Theme.caption
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }
    PlainButton {
        objectName: "remove"
        text: "Remove"
        tint: Theme.red
        textSize: Theme.caption
        Accessible.name: "Remove " + root.path
        onClicked: root.removed()
    }
}
