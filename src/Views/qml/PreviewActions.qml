// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// What can be done with a file.
FlowLayout {
    id: root

    required property FilePreview preview

    spacing: 8

    PushButton {
        objectName: "previewOpen"
        text: "Open File"
        symbol: "arrow.up.forward.square"
        tint: Theme.primary
        mostWidth: root.width
        onClicked: root.preview.openFile()
    }
    PushButton {
        objectName: "previewReveal"
        text: "Reveal in Finder"
        symbol: "folder"
        tint: Theme.primary
        mostWidth: root.width
        onClicked: root.preview.revealFile()
    }
}
