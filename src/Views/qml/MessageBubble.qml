// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// One message: a request on the right, an answer on the left.
Item {
    id: root

    required property int index
    required property string text
    required property string richText
    required property bool isUser

    readonly property real gap: index === 0 ? 0 : 16
    readonly property real widest: width - 60

    implicitHeight: bubble.height + gap
    opacity: Math.min(1, motion.value)

    SpringMotion {
        id: motion

        response: 0.4
        dampingFraction: 0.8
        running: true
    }

    Symbol {
        visible: !root.isUser
        x: 0
        y: bubble.y + 10
        width: 24
        name: "doc.text.magnifyingglass"
        size: Theme.callout * 1.3
        color: Theme.accent
    }
    Rectangle {
        id: bubble

        readonly property real sidePadding: root.isUser ? 16 : 14

        x: root.isUser ? root.width - width : 32
        y: root.gap + 8 * (1 - motion.value)
        width: words.width + 2 * sidePadding
        height: words.height + 20
        radius: 16
        color: root.isUser ? Theme.accent : Theme.controlBackground

        TextEdit {
            id: words

            x: bubble.sidePadding
            y: 10
            width: Math.min(implicitWidth, root.widest - 2 * bubble.sidePadding - (root.isUser ? 0 : 32))
            readOnly: true
            selectByMouse: true
            wrapMode: TextEdit.Wrap
            // What is shown as rich text has been made from plain text, with bold type alone.
            textFormat: root.isUser ? TextEdit.PlainText : TextEdit.RichText
            text: root.isUser ? root.text : root.richText
            color: root.isUser ? Theme.accentInk : Theme.primary
            selectionColor: root.isUser ? Theme.primary : Theme.accent
            selectedTextColor: root.isUser ? Theme.windowBackground : Theme.accentInk
            font.pixelSize: Theme.body
            Accessible.role: Accessible.StaticText
            Accessible.name: root.text
        }
    }
}
