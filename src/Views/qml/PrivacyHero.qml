// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// The promise, and what the network has to do with it.
Rectangle {
    id: root

    required property bool isOnline

    Layout.fillWidth: true
    implicitHeight: column.implicitHeight + 40
    radius: 12
    color: Theme.faded(Theme.green, 0.04)
    border.width: 1
    border.color: Theme.faded(Theme.green, 0.15)

    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.margins: 20
        spacing: 12

        RowLayout {
            spacing: 14

            Symbol {
                name: "lock.shield.fill"
                size: 40
                color: Theme.green
            }
            ColumnLayout {
                spacing: 4

                PlainLabel {
                    Layout.fillWidth: true
                    text: "Dugwise runs entirely on your Mac."
                    font.pixelSize: Theme.title3
                    font.weight: Font.DemiBold
                    wrapMode: Text.Wrap
                }
                PlainLabel {
                    Layout.fillWidth: true
                    text: "Your files are indexed locally. Nothing is uploaded to any server. "
                          + "No data leaves your machine."
                    color: Theme.secondary
                    font.pixelSize: Theme.callout
                    wrapMode: Text.Wrap
                }
            }
        }
        Rectangle {
            Layout.fillWidth: true
            implicitHeight: note.implicitHeight + 16
            radius: 8
            color: Theme.faded(Theme.blue, 0.06)

            NoteRow {
                id: note

                objectName: "networkNote"
                anchors.fill: parent
                anchors.margins: 8
                symbol: "info.circle.fill"
                tint: Theme.blue
                text: root.isOnline
                      ? "Your Mac is online, but Dugwise sends ZERO data over the network. All "
                        + "search, AI processing, and file indexing happen entirely on your device."
                      : "Your Mac is offline. Dugwise works perfectly offline — everything runs "
                        + "locally on your device."
            }
        }
    }
}
