// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls
import Dugwise

/// A search or a summary is under way.
Item {
    id: root

    required property bool isModelAvailable

    implicitWidth: ground.width
    implicitHeight: ground.height + 16

    Rectangle {
        id: ground

        y: 16
        width: row.width + 32
        height: row.height + 20
        radius: 12
        color: Theme.controlBackground

        Row {
            id: row

            anchors.centerIn: parent
            spacing: 8

            BusyIndicator {
                anchors.verticalCenter: parent.verticalCenter
                implicitWidth: 22
                implicitHeight: 22
                running: true
                palette.dark: Theme.accent
            }
            PlainLabel {
                anchors.verticalCenter: parent.verticalCenter
                objectName: "searching"
                text: root.isModelAvailable ? "Thinking..." : "Searching your files..."
                color: Theme.secondary
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
}
