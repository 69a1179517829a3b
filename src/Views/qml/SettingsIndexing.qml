// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Dugwise

/// Which folders are indexed, and when.
TitledCard {
    id: root

    required property Session session
    readonly property bool hasFolders: session.folderCount > 0

    title: "Indexing"

    SwitchRow {
        objectName: "enableLocalIndexing"
        text: "Enable local indexing"
        checked: root.session.settings.enableLocalIndexing
        onToggled: root.session.settings.enableLocalIndexing = checked
    }
    PlainLabel {
        Layout.fillWidth: true
        text: "Indexed Folders"
        font.pixelSize: Theme.callout
        font.weight: Font.Medium
    }
    PlainLabel {
        objectName: "noFolders"
        Layout.fillWidth: true
        visible: !root.hasFolders
        text: "No folders added yet."
        color: Theme.secondary
        font.pixelSize: Theme.caption
        wrapMode: Text.Wrap
    }
    FolderList {
        id: folders

        objectName: "settingsFolders"
        Layout.fillWidth: true
        visible: root.hasFolders
        session: root.session
        after: addFolder
        mostHeight: 270 * Theme.textScale
        spacing: 6

        delegate: FolderRow {
            width: folders.width - (folders.interactive ? 12 : 0)
            label.text: path
            label.font.pixelSize: Theme.caption
            label.wrapMode: Text.Wrap
            button.text: "Remove"
            button.textSize: Theme.caption
            button.tint: Theme.red
            button.Accessible.name: "Remove " + path
        }
    }
    Flow {
        Layout.fillWidth: true
        spacing: 8

        PushButton {
            id: addFolder

            objectName: "addFolderInSettings"
            text: "Add Folder"
            symbol: "plus"
            onClicked: root.session.addFolder()
        }
        PushButton {
            objectName: "reindexAll"
            visible: root.hasFolders
            enabled: !root.session.indexer.isIndexing && root.session.settings.enableLocalIndexing
            text: "Re-index All"
            onClicked: root.session.settings.reindexAll()
        }
    }
    NoteRow {
        objectName: "filesIndexed"
        symbol: "info.circle"
        text: "Files: " + root.session.indexer.totalFilesIndexed + " indexed"
    }
    NoteRow {
        objectName: "indexingOff"
        visible: !root.session.settings.enableLocalIndexing
        symbol: "info.circle"
        text: "While this is off no folder is indexed; what is indexed already stays."
    }
}
