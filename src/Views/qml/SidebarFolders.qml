// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Dugwise

/// The indexed folders. Many of them scroll by themselves, so that what follows stays in reach.
ListView {
    id: root

    required property Session session

    readonly property real rowHeight: Math.ceil(Theme.callout * 1.8)
    readonly property int mostRows: 8

    implicitHeight: rowHeight * Math.min(mostRows, count)
    interactive: count > mostRows
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    model: session.folderNames
    ScrollBar.vertical: ScrollBar { visible: root.interactive }
    Accessible.role: Accessible.List
    Accessible.name: "Indexed Folders"

    FocusFollower { flickable: root }

    delegate: RowLayout {
        id: folder

        required property string modelData
        required property int index

        x: 16
        width: root.width - 28
        height: root.rowHeight
        spacing: 6
        Accessible.role: Accessible.ListItem
        Accessible.name: modelData

        Symbol {
            name: "folder.fill"
            size: Theme.callout
            color: Theme.accent
        }
        PlainLabel {
            Layout.fillWidth: true
            text: folder.modelData
            font.pixelSize: Theme.callout
        }
        PlainButton {
            objectName: "removeFolder"
            symbol: "xmark.circle.fill"
            symbolSize: Theme.caption
            tint: Theme.secondary
            tip: "Remove folder"
            Accessible.name: tip + " " + folder.modelData
            onClicked: root.session.removeFolder(folder.index)
        }
    }
}
