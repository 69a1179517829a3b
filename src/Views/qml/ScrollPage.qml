// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// A page that scrolls: a title with a line below it, where it has one, and its blocks under one
/// another.
ScrollArea {
    id: root

    property string title
    property string subtitle
    /// Whether its blocks are given the page's height at least.
    property bool fillsPage: false
    property real spacing: 24
    default property alias blocks: column.data

    readonly property real margin: 30

    contentHeight: column.height + 2 * margin
    Accessible.role: Accessible.Pane
    Accessible.name: title

    SpringMotion {
        id: entrance

        response: 0.4
        dampingFraction: 0.8
        running: true
    }

    ColumnLayout {
        id: column

        x: root.margin
        y: root.margin + 16 * (1 - entrance.value)
        width: root.width - 2 * root.margin
        height: root.fillsPage ? Math.max(implicitHeight, root.height - 2 * root.margin) : implicitHeight
        spacing: root.spacing
        opacity: Math.min(1, entrance.value)

        ColumnLayout {
            visible: root.title !== ""
            spacing: 4

            PlainLabel {
                Layout.fillWidth: true
                text: root.title
                font.pixelSize: Theme.largeTitle
                font.bold: true
                wrapMode: Text.Wrap
                Accessible.role: Accessible.Heading
            }
            PlainLabel {
                Layout.fillWidth: true
                text: root.subtitle
                color: Theme.secondary
                font.pixelSize: Theme.subheadline
                wrapMode: Text.Wrap
            }
        }
    }
}
