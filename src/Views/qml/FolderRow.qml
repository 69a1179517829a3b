// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// An indexed folder in a FolderList, and the button that removes it. Its height is right at once, so
/// that the list knows where it lies.
Item {
    id: root

    required property int index
    required property string name
    required property string path
    property alias label: label
    property alias button: button
    readonly property FolderList list: ListView.view as FolderList
    readonly property real gap: 6

    implicitHeight: Math.max(label.height, button.height)
    Accessible.role: Accessible.ListItem
    Accessible.name: label.text

    Symbol {
        id: icon

        anchors.verticalCenter: parent.verticalCenter
        name: "folder.fill"
        size: Theme.callout
        color: Theme.accent
    }
    PlainLabel {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        x: icon.width + root.gap
        width: button.x - root.gap - x
        Accessible.ignored: true
    }
    PlainButton {
        id: button

        objectName: "removeFolder"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        onClicked: root.list.session.removeFolder(root.index)
        onActiveFocusChanged: {
            if (activeFocus)
                root.list.currentIndex = root.index
        }
        Keys.forwardTo: [root.list]
    }
}
