// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// The product's name, and three badges: security, network, language model.
Column {
    id: root

    required property Session session

    padding: 16
    bottomPadding: 8
    spacing: 8

    Row {
        spacing: 8

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "sparkle.magnifyingglass"
            size: Theme.title2
            color: Theme.accent
        }
        PlainLabel {
            anchors.verticalCenter: parent.verticalCenter
            text: "Dugwise"
            font.pixelSize: Theme.title3
            font.bold: true
        }
    }
    Flow {
        width: root.width - root.leftPadding - root.rightPadding
        spacing: 5

        Capsule {
            symbol: "lock.shield.fill"
            text: "Secure"
            ink: Theme.green
        }
        Capsule {
            objectName: "networkBadge"
            text: root.session.network.isConnected ? "Online" : "Offline"
            ink: root.session.network.isConnected ? Theme.blue : Theme.green
            dot: ink
        }
        Capsule {
            objectName: "aiStatusBadge"
            symbol: "cpu"
            text: root.session.isModelAvailable ? "AI" : "KW"
            ink: root.session.isModelAvailable ? Theme.accent : Theme.orange
        }
    }
}
