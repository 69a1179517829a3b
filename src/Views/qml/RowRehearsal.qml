// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// Makes one of each row of a conversation out of sight, a little in each frame, and drops them: what
/// is loaded and drawn for the first time then does not hold up the first answer.
Loader {
    id: root

    active: false
    asynchronous: true
    visible: false
    onLoaded: Qt.callLater(() => root.active = false)

    Timer {
        interval: 500
        running: true
        onTriggered: root.active = true
    }

    sourceComponent: Item {
        MessageBubble {
            width: 400
            index: 0
            text: "Request"
            richText: ""
            isFirst: true
            isLast: true
            isUser: true
        }
        MessageBubble {
            width: 400
            index: 1
            text: "Answer"
            richText: "<b>Answer</b>"
            isFirst: true
            isLast: true
            isUser: false
        }
        SearchResultCard {
            width: 400
            index: 2
            number: 1
            isSelected: true
            isFirst: true
            name: "Name"
            symbol: "doc.text.fill"
            colorName: "blue"
            typeName: "Text"
            isSemantic: true
            date: "1 day ago"
            size: "1 kB"
            folder: "/"
            host: "host"
            summary: "Summary"
        }
        SearchingIndicator {
            isModelAvailable: false
        }
    }
}
