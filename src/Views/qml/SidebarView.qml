// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Dugwise

/// Where to go, what was asked, what is indexed, and the state of everything at a glance.
Rectangle {
    id: root

    required property Session session

    readonly property var destinations: [
        { name: "Settings", symbol: "gearshape.fill", page: 1 },
        { name: "Privacy", symbol: "lock.shield.fill", page: 2 },
        { name: "About", symbol: "info.circle.fill", page: 3 }
    ]
    readonly property var sources: [
        { symbol: "folder.fill", name: "Files", isActive: session.folderNames.length > 0, status: String(session.indexer.totalFilesIndexed) },
        { symbol: "envelope.fill", name: "Mail", isActive: true, status: "Spotlight" },
        { symbol: "message.fill", name: "Messages", isActive: session.messagesAccessible, status: connection(session.messagesAccessible) },
        { symbol: "calendar", name: "Calendar", isActive: session.calendarEnabled, status: connection(session.calendarEnabled) },
        { symbol: "person.crop.circle", name: "Contacts", isActive: session.contactsEnabled, status: connection(session.contactsEnabled) }
    ]

    function connection(isConnected: bool): string {
        return isConnected ? "Connected" : "No Access"
    }

    color: Theme.sidebarBackground

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        SidebarHeader {
            Layout.fillWidth: true
            session: root.session
        }

        ScrollView {
            id: scroll

            Layout.fillWidth: true
            Layout.fillHeight: true
            contentWidth: availableWidth
            ScrollBar.horizontal.policy: ScrollBar.AlwaysOff

            ColumnLayout {
                width: scroll.availableWidth
                spacing: 2

                SidebarRow {
                    text: "Home"
                    symbol: "house.fill"
                    isCurrent: root.session.page === 0
                    onClicked: root.session.page = 0
                }

                SidebarTitle { text: "Recent Searches" }
                PlainLabel {
                    Layout.leftMargin: 16
                    visible: root.session.recentSearches.length === 0
                    text: "No recent searches"
                    color: Theme.tertiary
                    font.pixelSize: Theme.caption
                }
                Repeater {
                    model: root.session.recentSearches.slice(0, 5)

                    SidebarRow {
                        required property string modelData

                        objectName: "recentSearch"
                        text: modelData
                        symbol: "magnifyingglass"
                        onClicked: root.session.searchAgain(modelData)
                    }
                }

                SidebarTitle { text: "Indexed Folders" }
                Repeater {
                    model: root.session.folderNames

                    RowLayout {
                        id: folder

                        required property string modelData
                        required property int index

                        Layout.leftMargin: 16
                        Layout.rightMargin: 12
                        spacing: 6

                        Symbol {
                            name: "folder.fill"
                            size: Theme.callout
                            color: Theme.accent
                        }
                        PlainLabel {
                            Layout.fillWidth: true
                            text: folder.modelData
                            font.pixelSize: Theme.callout
                        }
                        PlainButton {
                            objectName: "removeFolder"
                            symbol: "xmark.circle.fill"
                            symbolSize: Theme.caption
                            tint: Theme.secondary
                            tip: "Remove folder"
                            onClicked: root.session.removeFolder(folder.index)
                        }
                    }
                }
                PlainButton {
                    Layout.leftMargin: 12
                    objectName: "addFolder"
                    text: "Add Folder"
                    symbol: "plus.circle.fill"
                    onClicked: root.session.addFolder()
                }

                SidebarTitle { text: "Data Sources" }
                Repeater {
                    model: root.sources

                    DataSourceRow {
                        required property var modelData

                        Layout.fillWidth: true
                        Layout.leftMargin: 16
                        Layout.rightMargin: 16
                        symbol: modelData.symbol
                        name: modelData.name
                        isActive: modelData.isActive
                        status: modelData.status
                    }
                }

                Item { implicitHeight: 10 }
                Repeater {
                    model: root.destinations

                    SidebarRow {
                        required property var modelData

                        text: modelData.name
                        symbol: modelData.symbol
                        isCurrent: root.session.page === modelData.page
                        onClicked: root.session.page = modelData.page
                    }
                }
            }
        }

        SidebarFooter {
            Layout.fillWidth: true
            session: root.session
        }
    }
}
