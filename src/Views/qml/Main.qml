// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import Dugwise

ApplicationWindow {
    id: root

    required property Session session
    readonly property size keptSize: session.windowSize()

    title: "Dugwise"
    width: Math.max(minimumWidth, keptSize.width)
    height: Math.max(minimumHeight, keptSize.height)
    minimumWidth: 1000
    minimumHeight: 600
    visible: true
    color: Theme.windowBackground

    Binding {
        target: Theme
        property: "isDark"
        value: root.session.appearance.isDark
    }
    Binding {
        target: Theme
        property: "reducesMotion"
        value: root.session.appearance.reducesMotion
    }
    Binding {
        target: Theme
        property: "textScale"
        value: root.session.appearance.textScale
    }

    MainView {
        id: view

        anchors.fill: parent
        session: root.session
    }

    FolderDialog {
        id: folders

        objectName: "folderDialog"
        onAccepted: root.session.folderPicker.conclude(folders.selectedFolder)
        onRejected: root.session.folderPicker.conclude("")
    }
    Connections {
        target: root.session.folderPicker

        function onAsked(message: string, confirmLabel: string): void {
            folders.title = message
            folders.acceptLabel = confirmLabel
            folders.open()
        }
    }
    AccessSheet {
        prompt: root.session.accessPrompt
    }
    onClosing: {
        if (root.visibility === Window.Windowed)
            root.session.setWindowSize(Qt.size(root.width, root.height))
        if (root.session.folderPicker)
            root.session.folderPicker.conclude("")
    }

    Timer {
        interval: 5000
        repeat: true
        running: root.active
        onTriggered: root.session.lookForModel()
    }

    Shortcut {
        sequences: [StandardKey.New]
        onActivated: {
            root.session.newChat()
            view.focusField()
        }
    }
    Shortcut {
        sequences: ["Ctrl+K", "Ctrl+L"]
        onActivated: view.focusField()
    }
    Shortcut {
        sequences: [StandardKey.MoveToPreviousPage]
        onActivated: view.turnPages(-1)
    }
    Shortcut {
        sequences: [StandardKey.MoveToNextPage]
        onActivated: view.turnPages(1)
    }
    Shortcut {
        sequences: [StandardKey.Quit]
        onActivated: root.close()
    }
    Instantiator {
        model: 9

        Shortcut {
            required property int index

            sequence: "Ctrl+" + (index + 1)
            onActivated: root.session.selectNumber(index + 1)
        }
    }
}
