// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// A message, or a part of a long one: a request on the right, an answer on the left.
Item {
    id: root

    required property int index
    required property string text
    required property string richText
    required property bool isFirst
    required property bool isLast
    required property bool isUser

    readonly property real gap: index === 0 || !isFirst ? 0 : 16
    readonly property real indent: isUser ? 0 : 32
    readonly property real sidePadding: isUser ? 16 : 14
    readonly property real widest: width - 60 - indent - 2 * sidePadding

    implicitHeight: bubble.height + gap
    opacity: Math.min(1, motion.value)

    SpringMotion {
        id: motion

        response: 0.4
        dampingFraction: 0.8
        running: true
    }

    Item {
        visible: !root.isUser && root.isFirst
        y: bubble.y + 8
        width: 24
        height: 24

        Symbol {
            anchors.centerIn: parent
            name: "doc.text.magnifyingglass"
            size: Theme.callout * 1.2
            color: Theme.accent
        }
    }
    Item {
        id: bubble

        x: root.isUser ? root.width - width : root.indent
        y: root.gap + 8 * (1 - motion.value)
        width: words.width + 2 * root.sidePadding
        height: words.y + words.height + (root.isLast ? 10 : 0)
        clip: !root.isFirst || !root.isLast

        // Round where the message begins and ends alone.
        Rectangle {
            y: root.isFirst ? 0 : -radius
            width: parent.width
            height: parent.height - y + (root.isLast ? 0 : radius)
            radius: 16
            color: root.isUser ? Theme.accent : Theme.controlBackground
        }
        TextEdit {
            id: words

            x: root.sidePadding
            y: root.isFirst ? 10 : 0
            width: root.isFirst && root.isLast ? Math.min(implicitWidth, root.widest) : root.widest
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
