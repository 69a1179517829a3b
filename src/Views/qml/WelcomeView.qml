// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Dugwise

/// What an empty conversation shows: what can be asked, and that all of it stays here.
AmbientParticleView {
    id: root

    required property Session session

    signal chosen(text: string)

    readonly property var promptChips: [
        "That legal agreement I downloaded last week",
        "The investor deck, it was a PowerPoint",
        "PDFs about insurance from last month",
        "Find that screenshot with the pricing table",
        "The contract Sarah sent me before our meeting",
        "Emails about the quarterly budget review"
    ]
    readonly property bool hasFolders: session.folderCount > 0
    readonly property bool isOnline: session.network.isConnected
    readonly property DataSources sources: DataSources { session: root.session }
    readonly property string status: {
        if (!hasFolders)
            return "Add some folders in the sidebar to get started."
        if (session.indexer.isIndexing)
            return "Indexing your files..."
        return session.indexer.totalFilesIndexed + " files indexed across "
                + session.folderCount + " folders"
    }

    ScrollArea {
        id: scroll

        anchors.fill: parent
        contentHeight: Math.max(root.height, column.implicitHeight + 32)
        interactive: contentHeight > height

        TapHandler {
            enabled: scroll.interactive // it keeps the clicks to itself then
            onTapped: eventPoint => root.spawnBurst(
                          root.mapFromItem(scroll.contentItem, eventPoint.position))
        }

        ColumnLayout {
            id: column

            y: Math.max(16, (root.height - implicitHeight) / 2)
            width: root.width
            spacing: 24

            AnimatedLogo {
                Layout.alignment: Qt.AlignHCenter
            }

            Column {
                id: title

                Layout.fillWidth: true
                Layout.leftMargin: 30
                Layout.rightMargin: 30
                spacing: 6
                opacity: 0

                PlainLabel {
                    width: parent.width
                    text: "Ask me to find anything on your Mac."
                    font.pixelSize: Theme.title2
                    font.weight: Font.DemiBold
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignHCenter
                }
                PlainLabel {
                    width: parent.width
                    text: "Search files, emails, messages, and calendar — naturally."
                    color: Theme.secondary
                    font.pixelSize: Theme.subheadline
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignHCenter
                }
                RowLayout {
                    anchors.horizontalCenter: parent.horizontalCenter
                    width: Math.min(implicitWidth, parent.width)
                    spacing: 6

                    BusyIndicator {
                        visible: running
                        running: root.hasFolders && root.session.indexer.isIndexing
                        implicitWidth: 16
                        implicitHeight: 16
                        padding: 0
                        palette.dark: Theme.accent
                    }
                    PlainLabel {
                        Layout.fillWidth: true
                        objectName: "status"
                        wrapMode: Text.Wrap
                        horizontalAlignment: Text.AlignHCenter
                        text: root.status
                        color: root.hasFolders ? Theme.secondary : Theme.orange
                        font.pixelSize: Theme.caption
                    }
                }
                Item { width: 1; height: 4 }
                GridLayout {
                    anchors.horizontalCenter: parent.horizontalCenter
                    columns: title.width < 400 * Theme.textScale ? 3 : 5
                    columnSpacing: 6
                    rowSpacing: 6

                    Repeater {
                        model: root.sources.all

                        SourceBadge {
                            required property DataSource modelData

                            symbol: modelData.symbol
                            text: modelData.name
                            isActive: modelData.isActive
                        }
                    }
                }
            }

            Item {
                Layout.fillWidth: true
                Layout.leftMargin: 30
                Layout.rightMargin: 30
                implicitHeight: chips.implicitHeight
                opacity: Math.min(1, chipsMotion.value)
                transform: Translate { y: 20 * (1 - chipsMotion.value) }

                GridLayout {
                    id: chips

                    objectName: "promptChips"

                    anchors.fill: parent
                    columns: 2
                    columnSpacing: 10
                    rowSpacing: 10

                    Repeater {
                        model: root.promptChips

                        PromptChip {
                            required property string modelData

                            Layout.fillWidth: true
                            Layout.preferredWidth: 1
                            text: modelData
                            onClicked: root.chosen(modelData)
                        }
                    }
                }
                SparkleArea {
                    anchors.fill: parent
                }
            }

            SecurityBanner {
                id: banner

                Layout.fillWidth: true
                Layout.leftMargin: 30
                Layout.rightMargin: 30
                opacity: 0
                isOnline: root.isOnline
            }
        }
    }

    SpringMotion {
        id: chipsMotion

        response: 0.8
        dampingFraction: 0.7
        delay: 0.7
        running: true
    }
    SequentialAnimation {
        running: true

        PauseAnimation { duration: Theme.reducesMotion ? 0 : 400 }
        NumberAnimation {
            target: title
            property: "opacity"
            to: 1
            duration: Theme.reducesMotion ? 0 : 800
            easing.type: Easing.OutQuad
        }
    }
    SequentialAnimation {
        running: true

        PauseAnimation { duration: Theme.reducesMotion ? 0 : 900 }
        NumberAnimation {
            target: banner
            property: "opacity"
            to: 1
            duration: Theme.reducesMotion ? 0 : 600
            easing.type: Easing.OutQuad
        }
    }
}
