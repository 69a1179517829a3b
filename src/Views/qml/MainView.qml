// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import Dugwise

/// Sidebar, content and preview, side by side.
SplitView {
    id: root

    required property Session session
    readonly property int contentMinimum: 400
    readonly property int previewMinimum: 260
    /// Its names and states have room to grow into.
    readonly property real sidebarScale: 1 + Math.max(0, Math.min(1, Theme.textScale - 1)) / 2

    function focusField(): void {
        root.session.page = 0
        chat.field.focusField()
    }

    function turnPages(count: int): void {
        if (preview.area.hasKeyboard)
            preview.area.turnPages(count)
        else if (page.item)
            page.turnPages(count)
        else
            chat.turnPages(count)
    }

    orientation: Qt.Horizontal
    onResizingChanged: {
        if (!root.resizing)
            root.session.setColumns(root.saveState())
    }
    Component.onCompleted: root.restoreState(root.session.columns())
    handle: Rectangle {
        implicitWidth: 1
        color: Theme.separator
        containmentMask: Item {
            x: -3
            width: 7
            height: root.height
        }
    }

    SidebarView {
        id: sidebar

        SplitView.preferredWidth: 240 * root.sidebarScale
        SplitView.minimumWidth: 220 * root.sidebarScale
        SplitView.maximumWidth: Math.max(SplitView.minimumWidth,
                                         Math.min(360, root.width - root.contentMinimum - root.previewMinimum - 2))
        session: root.session
    }
    Item {
        SplitView.fillWidth: true
        SplitView.minimumWidth: root.contentMinimum

        ChatView {
            id: chat

            anchors.fill: parent
            visible: root.session.page === 0
            session: root.session
        }
        DetailPage {
            id: page

            anchors.fill: parent
            session: root.session
        }
    }
    PreviewPanel {
        id: preview

        SplitView.preferredWidth: 300
        SplitView.minimumWidth: root.previewMinimum
        SplitView.maximumWidth: Math.max(root.previewMinimum,
                                         root.width - sidebar.width - root.contentMinimum - 2)
        session: root.session
    }
}
