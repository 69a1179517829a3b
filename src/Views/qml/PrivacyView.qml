// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// That everything happens on this machine, and by what means.
ScrollPage {
    id: root

    required property Session session
    readonly property bool isOnline: session.network.isConnected

    objectName: "privacyView"
    title: "Privacy & Security"
    subtitle: "Your files, your Mac, your privacy."

    PrivacyStatus { isOnline: root.isOnline }
    PrivacyHero { isOnline: root.isOnline }
    PrivacyFeatures {}
    PrivacyDetails {}
    PrivacyFooter {
        Layout.fillWidth: true
        isOnline: root.isOnline
    }
}
