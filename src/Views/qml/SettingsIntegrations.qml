// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// The state of each integration.
TitledCard {
    id: root

    required property Session session

    title: "Integrations"
    Component.onCompleted: session.settings.lookForSources()

    IntegrationRow {
        symbol: "brain"
        label: "Semantic Search (NLEmbedding)"
        detail: "On-device sentence embeddings for meaning-based file matching"
        isActive: true
    }
    IntegrationRow {
        symbol: "magnifyingglass"
        label: "Spotlight Metadata"
        detail: "Download dates, last-used dates, and file origin URLs"
        isActive: true
    }
    IntegrationRow {
        symbol: "envelope.fill"
        label: "Apple Mail"
        detail: "Search emails via Spotlight index"
        isActive: true
    }
    IntegrationRow {
        objectName: "messagesRow"
        symbol: "message.fill"
        label: "Messages"
        isActive: root.session.messagesAccessible
        detail: isActive ? "Connected — searching iMessage and SMS"
                         : "Requires Full Disk Access in System Settings > Privacy"
    }
    IntegrationRow {
        objectName: "calendarRow"
        symbol: "calendar"
        label: "Calendar (EventKit)"
        isActive: root.session.calendarEnabled
        detail: isActive ? "Connected — using events as date anchors"
                         : "Grant calendar access to enable date context from events"
        canAsk: root.session.settings.canAskForCalendar
        onAsked: root.session.settings.askForCalendar()
    }
    IntegrationRow {
        objectName: "contactsRow"
        symbol: "person.crop.circle"
        label: "Contacts"
        isActive: root.session.contactsEnabled
        detail: isActive ? "Connected — resolving names to emails"
                         : "Grant contacts access to resolve 'from Sarah' to email addresses"
        canAsk: root.session.settings.canAskForContacts
        onAsked: root.session.settings.askForContacts()
    }
}
