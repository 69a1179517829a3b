// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// A switch that is only kept: nothing is synchronised.
TitledCard {
    id: root

    required property Session session

    title: "Cloud Sync"

    SwitchRow {
        objectName: "cloudSyncEnabled"
        text: "Enable cloud sync"
        checked: root.session.settings.cloudSyncEnabled
        onToggled: root.session.settings.cloudSyncEnabled = checked
    }
    NoteRow {
        symbol: "lock.shield.fill"
        tint: Theme.green
        text: "Cloud sync is disabled by default. Your data stays on your Mac."
    }
}
