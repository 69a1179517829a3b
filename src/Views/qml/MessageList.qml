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

    objectName: "conversation"
    clip: true
    model: session.conversation
    topMargin: 16
    bottomMargin: 16
    leftMargin: 16
    rightMargin: 16
    boundsBehavior: Flickable.StopAtBounds
    reuseItems: false
    cacheBuffer: 400
    ScrollBar.vertical: ScrollBar {}
    Accessible.role: Accessible.List
    Accessible.name: "Conversation"

    // Only a new message scrolls, and then to the end of what has come.
    onCountChanged: Qt.callLater(root.positionViewAtEnd)
    Component.onCompleted: root.positionViewAtEnd()

    delegate: DelegateChooser {
        role: "kind"

        DelegateChoice {
            roleValue: ConversationModel.Request

            MessageBubble {
                width: root.width - root.leftMargin - root.rightMargin
                isUser: true
            }
        }
        DelegateChoice {
            roleValue: ConversationModel.Answer

            MessageBubble {
                width: root.width - root.leftMargin - root.rightMargin
                isUser: false
            }
        }
        DelegateChoice {
            roleValue: ConversationModel.Result

            SearchResultCard {
                width: root.width - root.leftMargin - root.rightMargin
                onSelected: root.session.select(index)
                onOpened: root.session.openFile(index)
                onRevealed: root.session.revealFile(index)
            }
        }
        DelegateChoice {
            roleValue: ConversationModel.CrossAppResult

            CrossAppResultCard {
                width: root.width - root.leftMargin - root.rightMargin
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
