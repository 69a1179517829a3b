// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQml
import Dugwise

/// All that can be searched, in the order in which it is shown.
QtObject {
    id: root

    required property Session session
    readonly property list<DataSource> all: [
        DataSource {
            symbol: "folder.fill"
            name: "Files"
            isActive: root.session.folderCount > 0
            status: root.session.indexer.totalFilesIndexed
        },
        DataSource {
            symbol: "envelope.fill"
            name: "Mail"
            isActive: true
            status: "Spotlight"
        },
        DataSource {
            symbol: "message.fill"
            name: "Messages"
            isActive: root.session.messagesAccessible
            status: root.connection(isActive)
        },
        DataSource {
            symbol: "calendar"
            name: "Calendar"
            isActive: root.session.calendarEnabled
            status: root.connection(isActive)
        },
        DataSource {
            symbol: "person.crop.circle"
            name: "Contacts"
            isActive: root.session.contactsEnabled
            status: root.connection(isActive)
        }
    ]

    function connection(isConnected: bool): string {
        return isConnected ? "Connected" : "No Access"
    }
}
