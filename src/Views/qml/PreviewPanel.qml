// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// What the selected result's file is, why it matched, what it says, and what can be done with it.
Rectangle {
    id: root

    required property Session session
    readonly property FilePreview preview: session.preview
    readonly property alias area: scroll

    objectName: "previewPanel"
    color: Theme.windowBackground

    Column {
        objectName: "previewHint"
        anchors.centerIn: parent
        width: parent.width - 32
        spacing: 12
        visible: !root.preview.hasFile

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "doc.text.magnifyingglass"
            size: 36
            color: Theme.tertiary
        }
        PlainLabel {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "Select a file to preview"
            color: Theme.secondary
            font.pixelSize: Theme.callout
            wrapMode: Text.Wrap
        }
        PlainLabel {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "You can also say \"tell me about #1\""
            color: Theme.tertiary
            font.pixelSize: Theme.caption
            wrapMode: Text.Wrap
        }
    }

    ScrollArea {
        id: scroll

        objectName: "previewScroll"
        anchors.fill: parent
        visible: root.preview.hasFile
        contentHeight: blocks.height + 32

        Connections {
            target: root.preview

            function onFileChanged(): void {
                scroll.contentY = 0
            }
        }

        Column {
            id: blocks

            x: 16
            y: 16
            width: scroll.width - 32
            spacing: 16

            component Divider: Rectangle {
                width: parent ? parent.width : 0
                height: 1
                color: Theme.separator
            }

            PreviewHeader {
                width: parent.width
                preview: root.preview
            }
            Divider {}
            PreviewInsights {
                width: parent.width
                preview: root.preview
                isModelAvailable: root.session.isModelAvailable
            }
            Divider {}
            PreviewMetadata {
                width: parent.width
                preview: root.preview
            }
            Divider {}
            PreviewReasons {
                width: parent.width
                preview: root.preview
            }
            Divider {}
            PreviewContent {
                width: parent.width
                preview: root.preview
            }
            Divider {}
            PreviewActions {
                width: parent.width
                preview: root.preview
            }
        }
    }
}
