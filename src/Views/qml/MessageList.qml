// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import Qt.labs.qmlmodels
import Dugwise

/// The messages, oldest first, with the cards of what was found below each answer.
ListView {
    id: root

    required property Session session

    readonly property real rowWidth: width - leftMargin - rightMargin
    /// Whether the end is kept in view: from a new message on until the person scrolls.
    property bool follows: false

    function turnPages(count: int): void {
        root.stay()
        root.contentY = Math.max(root.originY - root.topMargin,
                                 Math.min(root.end(), root.contentY + count * root.height * 0.9))
    }

    /// Puts the keyboard on the next card after a row, or before it when `by` is -1.
    function goToCard(row: int, by: int): void {
        const next = root.session.conversation.nextResult(row, by)
        if (next < 0)
            return
        root.stay()
        root.positionViewAtIndex(next, ListView.Contain)
        root.itemAtIndex(next).forceActiveFocus(Qt.TabFocusReason)
    }

    function stay(): void {
        root.follows = false
        scrolling.stop()
    }

    /// Where the content ends at the bottom, as far as its height is known.
    function end(): real {
        const end = root.originY + root.contentHeight + root.bottomMargin - root.height
        return Math.max(root.originY - root.topMargin, end)
    }

    function showEnd(): void {
        root.positionViewAtEnd()
        root.contentY = root.end()
    }

    function scrollToEnd(): void {
        scrolling.stop()
        if (Theme.reducesMotion) {
            root.showEnd()
            return
        }
        // No more than a few pages: each row on the way has to be made.
        root.contentY = Math.max(root.contentY, root.end() - 4 * root.height)
        scrolling.from = root.contentY
        scrolling.to = root.end()
        scrolling.start()
    }

    objectName: "conversation"
    clip: true
    model: session.conversation
    topMargin: 16
    leftMargin: 16
    rightMargin: 16
    bottomMargin: 16
    boundsBehavior: Flickable.StopAtBounds
    reuseItems: false
    cacheBuffer: 400
    ScrollBar.vertical: ScrollBar {
        onPressedChanged: root.stay()
    }
    Accessible.role: Accessible.List
    Accessible.name: "Conversation"

    onCountChanged: {
        root.follows = true
        Qt.callLater(root.scrollToEnd)
    }
    // The heights of rows that come into view were estimates before.
    onContentHeightChanged: {
        if (root.follows)
            Qt.callLater(root.scrollToEnd)
    }
    onMovementStarted: root.stay()
    Component.onCompleted: root.showEnd()

    NumberAnimation {
        id: scrolling

        target: root
        property: "contentY"
        duration: 350
        easing.type: Easing.InOutQuad
        onFinished: root.showEnd()
    }
    FocusFollower {
        flickable: root
        onMoved: root.stay()
    }

    delegate: DelegateChooser {
        role: "kind"

        DelegateChoice {
            roleValue: ConversationModel.Request

            MessageBubble {
                width: root.rowWidth
                isUser: true
            }
        }
        DelegateChoice {
            roleValue: ConversationModel.Answer

            MessageBubble {
                width: root.rowWidth
                isUser: false
            }
        }
        DelegateChoice {
            roleValue: ConversationModel.Result

            SearchResultCard {
                width: root.rowWidth
                onClicked: root.session.select(index)
                onOpened: root.session.openFile(index)
                onRevealed: root.session.revealFile(index)
                Keys.onUpPressed: root.goToCard(index, -1)
                Keys.onDownPressed: root.goToCard(index, 1)
            }
        }
        DelegateChoice {
            roleValue: ConversationModel.CrossAppResult

            CrossAppResultCard {
                width: root.rowWidth
            }
        }
        DelegateChoice {
            roleValue: ConversationModel.Searching

            SearchingIndicator {
                isModelAvailable: root.session.isModelAvailable
            }
        }
    }
}
