// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// The state of what matters for privacy: in a row, or in two where that is too narrow.
GridLayout {
    id: root

    required property bool isOnline

    Layout.fillWidth: true
    columns: width < 320 * Theme.textScale ? 2 : 4
    columnSpacing: 10
    rowSpacing: 10

    StatusPill {
        symbol: "lock.shield.fill"
        label: "Data Security"
        value: "Protected"
        tint: Theme.green
    }
    StatusPill {
        objectName: "networkPill"
        symbol: root.isOnline ? "wifi" : "wifi.slash"
        label: "Network"
        value: root.isOnline ? "Online" : "Offline"
        tint: root.isOnline ? Theme.blue : Theme.green
    }
    StatusPill {
        objectName: "dataSentPill"
        symbol: "arrow.up.right.circle"
        label: "Data Sent"
        value: "None"
        tint: Theme.green
    }
    StatusPill {
        symbol: "cpu"
        label: "Processing"
        value: "On-Device"
        tint: Theme.accent
    }
}
