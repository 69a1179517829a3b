// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// The data sources, each with its state.
Column {
    id: root

    required property Session session

    function connection(isConnected: bool): string {
        return isConnected ? "Connected" : "No Access"
    }

    spacing: 2

    DataSourceRow {
        width: parent.width
        symbol: "folder.fill"
        name: "Files"
        isActive: root.session.folderCount > 0
        status: root.session.indexer.totalFilesIndexed
    }
    DataSourceRow {
        width: parent.width
        symbol: "envelope.fill"
        name: "Mail"
        isActive: true
        status: "Spotlight"
    }
    DataSourceRow {
        width: parent.width
        symbol: "message.fill"
        name: "Messages"
        isActive: root.session.messagesAccessible
        status: root.connection(isActive)
    }
    DataSourceRow {
        width: parent.width
        symbol: "calendar"
        name: "Calendar"
        isActive: root.session.calendarEnabled
        status: root.connection(isActive)
    }
    DataSourceRow {
        width: parent.width
        symbol: "person.crop.circle"
        name: "Contacts"
        isActive: root.session.contactsEnabled
        status: root.connection(isActive)
    }
}
