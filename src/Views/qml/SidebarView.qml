// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Dugwise

/// Where to go, what was asked, what is indexed, and the state of everything at a glance.
Rectangle {
    id: root

    required property Session session

    objectName: "sidebar"
    color: Theme.sidebarBackground

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        SidebarHeader {
            Layout.fillWidth: true
            session: root.session
        }
        ScrollArea {
            id: scroll

            Layout.fillWidth: true
            Layout.fillHeight: true
            contentHeight: sections.height + 8

            Column {
                id: sections

                width: scroll.width
                spacing: 2

                SidebarRow {
                    label: "Home"
                    symbol: "house.fill"
                    isCurrent: root.session.page === 0
                    onClicked: root.session.page = 0
                }

                SidebarTitle { text: "Recent Searches" }
                PlainLabel {
                    x: 16
                    width: parent.width - 32
                    visible: root.session.recentLabels.length === 0
                    text: "No recent searches"
                    color: Theme.tertiary
                    font.pixelSize: Theme.caption
                }
                Repeater {
                    model: root.session.recentLabels

                    SidebarRow {
                        required property string modelData
                        required property int index

                        objectName: "recentSearch"
                        label: modelData
                        symbol: "magnifyingglass"
                        onClicked: root.session.searchAgain(index)
                    }
                }

                SidebarTitle { text: "Indexed Folders" }
                SidebarFolders {
                    width: parent.width
                    session: root.session
                    after: addFolder
                }
                PlainButton {
                    id: addFolder

                    x: 12
                    objectName: "addFolder"
                    text: "Add Folder"
                    symbol: "plus.circle.fill"
                    onClicked: root.session.addFolder()
                }

                SidebarTitle { text: "Data Sources" }
                SidebarSources {
                    x: 16
                    width: parent.width - 32
                    session: root.session
                }

                Item { width: 1; height: 10 }
                SidebarRow {
                    label: "Settings"
                    symbol: "gearshape.fill"
                    isCurrent: root.session.page === 1
                    onClicked: root.session.page = 1
                }
                SidebarRow {
                    label: "Privacy"
                    symbol: "lock.shield.fill"
                    isCurrent: root.session.page === 2
                    onClicked: root.session.page = 2
                }
                SidebarRow {
                    label: "About"
                    symbol: "info.circle.fill"
                    isCurrent: root.session.page === 3
                    onClicked: root.session.page = 3
                }
            }
        }
        SidebarFooter {
            Layout.fillWidth: true
            session: root.session
        }
    }
}
