// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// The beginning of a file's text, and an image's thumbnail.
Column {
    id: root

    required property FilePreview preview
    /// Of whole lines.
    readonly property real mostHeight: Math.floor((300 - 16) / metrics.lineSpacing) * metrics.lineSpacing + 16
    /// Under the words that were asked for.
    readonly property color mark: Theme.faded(Theme.orange, 0.3)

    spacing: 8

    FontMetrics {
        id: metrics

        font: words.font
    }
    SectionTitle {
        width: parent.width
        text: "Content Preview"
    }
    Picture {
        readonly property real fit: Math.min(1, root.width / Math.max(1, implicitWidth),
                                             240 / Math.max(1, implicitHeight))

        objectName: "thumbnail"
        visible: implicitWidth > 0
        anchors.horizontalCenter: parent.horizontalCenter
        width: implicitWidth * fit
        height: implicitHeight * fit
        image: root.preview.thumbnail
        Accessible.role: Accessible.Graphic
        Accessible.name: "Picture of " + root.preview.name
    }
    Rectangle {
        visible: root.preview.hasText
        width: parent.width
        height: Math.min(root.mostHeight, words.height + 16)
        radius: 8
        color: Theme.faded(Theme.controlBackground, 0.5)
        border.width: 1
        border.color: Theme.faded(Theme.secondary, 0.12)

        Item {
            anchors.fill: parent
            anchors.margins: 8
            clip: true

            SelectableText {
                id: words

                objectName: "previewText"
                width: parent.width
                // It has been made from plain text, with marks alone, which get their colour here.
                textFormat: TextEdit.RichText
                text: root.preview.markedText.replace(/<b>/g, "<b style=\"background-color:" + root.mark + "\">")
                font.family: "monospace"
                Accessible.name: root.preview.text
            }
        }
    }
    PlainLabel {
        objectName: "noText"
        visible: !root.preview.hasText && !root.preview.isReading
        width: parent.width
        text: "No text to preview."
        color: Theme.tertiary
        font.pixelSize: Theme.caption
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
