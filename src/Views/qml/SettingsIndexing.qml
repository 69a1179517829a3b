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
    Repeater {
        objectName: "folders"
        model: root.session.settings.folderPaths

        SettingsFolder {
            required property string modelData
            required property int index

            path: modelData
            onRemoved: root.session.removeFolder(index)
        }
    }
    Flow {
        Layout.fillWidth: true
        spacing: 8

        PushButton {
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
