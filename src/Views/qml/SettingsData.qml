// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// The clearing of the index, which is asked about once more before it is done.
TitledCard {
    id: root

    required property Session session
    property bool isAsking: false
    readonly property bool isIndexedAgain: session.settings.enableLocalIndexing && session.folderCount > 0

    function ask(): void {
        root.isAsking = true
        cancel.forceActiveFocus(Qt.TabFocusReason)
    }

    function conclude(isConfirmed: bool): void {
        root.isAsking = false
        clear.forceActiveFocus(Qt.TabFocusReason)
        if (isConfirmed)
            root.session.settings.clearIndexedData()
    }

    title: "Data"
    Keys.onEscapePressed: event => {
        event.accepted = root.isAsking
        if (root.isAsking)
            root.conclude(false)
    }

    PushButton {
        id: clear

        objectName: "clear"
        visible: !root.isAsking
        text: "Clear All Indexed Data"
        symbol: "trash"
        tint: Theme.red
        onClicked: root.ask()
    }
    ColumnLayout {
        visible: root.isAsking
        spacing: 10

        PlainLabel {
            objectName: "clearQuestion"
            Layout.fillWidth: true
            text: "Clear all that is indexed? Your own files stay as they are"
                  + (root.isIndexedAgain ? ", and your folders are then indexed again." : ".")
            font.pixelSize: Theme.callout
            wrapMode: Text.Wrap
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        Flow {
            Layout.fillWidth: true
            spacing: 8

            PushButton {
                objectName: "confirmClear"
                text: "Clear"
                tint: Theme.red
                isFilled: true
                onClicked: root.conclude(true)
            }
            PushButton {
                id: cancel

                objectName: "cancelClear"
                text: "Cancel"
                onClicked: root.conclude(false)
            }
        }
    }
}
