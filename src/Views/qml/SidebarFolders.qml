// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Dugwise

/// The names of the indexed folders.
FolderList {
    id: root

    readonly property real rowHeight: Math.ceil(Theme.callout * 1.8)

    objectName: "sidebarFolders"
    mostHeight: 8 * rowHeight

    delegate: FolderRow {
        x: 16
        width: root.width - 28
        height: root.rowHeight
        label.text: name
        label.font.pixelSize: Theme.callout
        button.symbol: "xmark.circle.fill"
        button.symbolSize: Theme.caption
        button.tint: Theme.secondary
        button.tip: "Remove folder"
        button.Accessible.name: "Remove folder " + name
    }
}
