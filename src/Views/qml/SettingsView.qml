// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// What is indexed and how, the state of the integrations, and the clearing of it all.
ScrollPage {
    id: root

    required property Session session

    objectName: "settingsView"
    title: "Settings"
    subtitle: "Configure how Dugwise indexes and searches your files."

    // The question is longer than the button that it takes the place of.
    onContentHeightChanged: {
        if (clearing.isAsking)
            root.turnPages(99)
    }

    SettingsIndexing { session: root.session }
    SettingsIntegrations { session: root.session }
    SettingsFileTypes { session: root.session }
    SettingsAI { session: root.session }
    SettingsSync { session: root.session }
    SettingsData {
        id: clearing

        session: root.session
    }
}
