// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// The page that the sidebar leads to beside the conversation; made when it is shown.
Loader {
    id: root

    required property Session session

    function turnPages(count: int): void {
        (root.item as ScrollPage)?.turnPages(count)
    }

    sourceComponent: [null, settings, privacy, about][root.session.page]

    Component {
        id: settings

        SettingsView { session: root.session }
    }
    Component {
        id: privacy

        PrivacyView { session: root.session }
    }
    Component {
        id: about

        AboutView {}
    }
}
