// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Dugwise

/// How far the indexing is, and that nothing is sent.
ColumnLayout {
    id: root

    required property Session session

    spacing: 0

    ColumnLayout {
        Layout.fillWidth: true
        Layout.leftMargin: 16
        Layout.rightMargin: 16
        Layout.topMargin: 6
        Layout.bottomMargin: 6
        spacing: 4

        ProgressBar {
            id: progress

            Layout.fillWidth: true
            visible: root.session.indexer.isIndexing
            value: root.session.indexer.indexingProgress
            Accessible.name: "Indexing files..."

            background: Rectangle {
                implicitHeight: 4
                radius: 2
                color: Theme.faded(Theme.gray, 0.25)
            }
            contentItem: Item {
                implicitHeight: 4

                Rectangle {
                    width: progress.visualPosition * parent.width
                    height: parent.height
                    radius: 2
                    color: Theme.accent
                }
            }
        }
        Row {
            Layout.fillWidth: true
            spacing: 5

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                visible: !root.session.indexer.isIndexing
                name: "checkmark.circle.fill"
                size: Theme.caption
                color: Theme.green
            }
            PlainLabel {
                objectName: "indexingStatus"
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, parent.width - x)
                text: root.session.indexer.isIndexing
                      ? "Indexing files..."
                      : root.session.indexer.totalFilesIndexed + " files indexed"
                color: Theme.secondary
                font.pixelSize: Theme.caption
            }
        }
    }
    Rectangle {
        Layout.fillWidth: true
        implicitHeight: 1
        color: Theme.separator
    }
    Row {
        Layout.alignment: Qt.AlignHCenter
        Layout.topMargin: 4
        Layout.bottomMargin: 6
        spacing: 5

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "lock.shield.fill"
            size: Theme.caption2
            color: Theme.green
        }
        PlainLabel {
            objectName: "securityFooter"
            text: root.session.network.isConnected ? "Online • No data sent"
                                                   : "Offline • Fully local"
            color: Theme.secondary
            font.pixelSize: Theme.caption2
        }
    }
}
