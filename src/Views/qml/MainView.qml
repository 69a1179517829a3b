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

    function focusField(): void {
        root.session.page = 0
        chat.field.focusField()
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
        SplitView.preferredWidth: 240
        SplitView.minimumWidth: 220
        SplitView.maximumWidth: 360
        session: root.session
    }
    Item {
        SplitView.fillWidth: true
        SplitView.minimumWidth: 400

        ChatView {
            id: chat

            anchors.fill: parent
            visible: root.session.page === 0
            session: root.session
        }
        ComingPage {
            anchors.fill: parent
            visible: root.session.page !== 0
            page: root.session.page
        }
    }
    PreviewColumn {
        SplitView.preferredWidth: 300
        SplitView.minimumWidth: 220
        session: root.session
    }
}
