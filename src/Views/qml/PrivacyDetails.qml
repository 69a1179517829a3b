// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Dugwise

/// The technical means.
TitledCard {
    id: root

    readonly property var details: [
        ["Index format", "JSON (local Application Support)"],
        ["Folder access", "Security-scoped bookmarks via NSOpenPanel"],
        ["Text extraction", "Native APIs (PDFKit, String encoding)"],
        ["AI processing", "Apple Intelligence on-device LLM (FoundationModels)"],
        ["Semantic search", "NaturalLanguage sentence embeddings (local)"],
        ["Mail search", "Spotlight metadata index (read-only)"],
        ["Messages search", "Local SQLite DB (read-only, requires Full Disk Access)"],
        ["Calendar", "EventKit (read-only, requires permission)"],
        ["Contacts", "Contacts framework (read-only, requires permission)"],
        ["Network requests", "Zero — verified offline-capable"],
        ["Data sent", "None — all processing is on-device"]
    ]

    title: "Technical Details"

    Repeater {
        model: root.details

        DetailRow {
            required property var modelData

            label: modelData[0]
            value: modelData[1]
        }
    }
}
