// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Dugwise

/// What keeps it private, point by point.
ColumnLayout {
    id: root

    readonly property var features: [
        {
            symbol: "internaldrive",
            title: "Local Storage Only",
            detail: "Your file index is stored in your Mac's Application Support folder. No "
                    + "external databases."
        },
        {
            symbol: "cpu",
            title: "On-Device AI (Apple Intelligence)",
            detail: "All AI processing uses Apple's on-device FoundationModels framework. Queries "
                    + "never leave your Mac."
        },
        {
            symbol: "brain",
            title: "On-Device Semantic Search",
            detail: "NLEmbedding runs sentence-level semantic matching entirely on your CPU. No "
                    + "cloud embeddings API."
        },
        {
            symbol: "folder.badge.questionmark",
            title: "Explicit Folder Access",
            detail: "You choose which folders to index. We use macOS security-scoped bookmarks — "
                    + "no broad disk access without your permission."
        },
        {
            symbol: "app.connected.to.app.below.fill",
            title: "On-Device Cross-App Search",
            detail: "Mail, Messages, Calendar, and Contacts are queried locally using native "
                    + "macOS APIs. No network requests."
        },
        {
            symbol: "xmark.icloud",
            title: "Zero Network Traffic",
            detail: "Dugwise makes zero network requests. It works identically online or offline. "
                    + "Verified: check Activity Monitor."
        },
        {
            symbol: "eye.slash",
            title: "No Tracking",
            detail: "No analytics, no telemetry, no usage tracking. We don't know what you search "
                    + "for."
        },
        {
            symbol: "trash",
            title: "Easy Data Deletion",
            detail: "Remove any indexed folder or clear all data instantly from Settings."
        }
    ]

    Layout.fillWidth: true
    spacing: 14

    Repeater {
        model: root.features

        FeatureRow {
            required property var modelData

            spacing: 12
            symbol: modelData.symbol
            symbolSize: Math.round(Theme.title3 * 1.2)
            frameWidth: 28
            tint: Theme.green
            title: modelData.title
            detail: modelData.detail
        }
    }
}
