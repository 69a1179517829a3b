// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// The conversation: a welcome while it is empty, then its messages, and below them the field.
ColumnLayout {
    id: root

    required property Session session
    readonly property alias field: inputBar
    property string shownRequest

    function submit(text: string): void {
        inputBar.text = text
        inputBar.submit()
    }

    /// Scrolls the conversation by that many pages.
    function turnPages(count: int): void {
        messages.turnPages(count)
    }

    function takePendingQuery(): void {
        const query = root.session.pendingQuery
        if (query === "")
            return
        root.submit(query)
        root.session.clearPendingQuery()
    }

    /// In the field, where it can be sent at once.
    function showWaitingRequest(): void {
        const isUntouched = inputBar.text === "" || inputBar.text === root.shownRequest
        root.shownRequest = root.session.waitingRequest
        if (isUntouched)
            inputBar.text = root.shownRequest
    }

    objectName: "chatView"
    spacing: 0

    Connections {
        target: root.session

        function onPendingQueryChanged(): void {
            root.takePendingQuery()
        }
        function onWaitingRequestChanged(): void {
            root.showWaitingRequest()
        }
        function onAnswered(answer: string): void {
            announcement.visible = false
            announcement.Accessible.name = answer
            announcement.visible = true
        }
    }
    Component.onCompleted: {
        root.takePendingQuery()
        root.showWaitingRequest()
    }

    // Read out by a screen reader whenever it comes into view.
    Item {
        id: announcement

        visible: false
        Accessible.role: Accessible.AlertMessage
    }

    RowLayout {
        Layout.fillWidth: true
        Layout.margins: 6

        Item { Layout.fillWidth: true }
        PlainButton {
            objectName: "newChat"
            text: "New Chat"
            symbol: "plus.message"
            tip: "Start a new conversation"
            textColor: Theme.secondary
            onClicked: {
                root.session.newChat()
                inputBar.focusField()
            }
        }
    }
    Item {
        Layout.fillWidth: true
        Layout.fillHeight: true

        Loader {
            id: welcome

            readonly property bool isWanted: root.session.conversation.isEmpty

            anchors.fill: parent
            visible: isWanted
            onIsWantedChanged: {
                if (isWanted)
                    active = true
            }
            sourceComponent: WelcomeView {
                session: root.session
                onChosen: text => root.submit(text)
            }
        }
        // It takes half a frame to take down: not while the first request is shown.
        Timer {
            interval: 1500
            running: !welcome.isWanted
            onTriggered: welcome.active = false
        }
        // Made ahead, so that the first request need not wait for it.
        MessageList {
            id: messages

            anchors.fill: parent
            visible: !root.session.conversation.isEmpty
            session: root.session
        }
    }
    InputBar {
        id: inputBar

        Layout.fillWidth: true
        Layout.margins: 16
        session: root.session
    }
}
