// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// What the selected result is.
Rectangle {
    id: root

    required property Session session

    color: Theme.windowBackground

    Column {
        anchors.centerIn: parent
        width: parent.width - 40
        spacing: 10

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: root.session.selectedName === "" ? "doc.text.magnifyingglass" : "doc.text"
            size: 40
            color: Theme.tertiary
        }
        PlainLabel {
            width: parent.width
            objectName: "selectedName"
            horizontalAlignment: Text.AlignHCenter
            text: root.session.selectedName === "" ? "Select a file to preview"
                                                   : root.session.selectedName
            color: root.session.selectedName === "" ? Theme.secondary : Theme.primary
            font.pixelSize: Theme.callout
            wrapMode: Text.WrapAnywhere
            maximumLineCount: 6
            elide: Text.ElideRight
        }
    }
}
