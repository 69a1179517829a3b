// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// That it is secure, and whether this machine is online.
Flow {
    id: root

    required property bool isOnline
    readonly property color networkColor: isOnline ? Theme.blue : Theme.green

    spacing: 8

    Row {
        id: secure

        spacing: 5

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "lock.shield.fill"
            size: Math.round(Theme.callout * 1.2)
            color: Theme.green
        }
        PlainLabel {
            anchors.verticalCenter: parent.verticalCenter
            text: "Secure"
            color: Theme.green
            font.pixelSize: Theme.callout
            font.weight: Font.Medium
        }
    }
    PlainLabel {
        visible: root.width >= secure.width + implicitWidth + network.width + 2 * root.spacing
        text: "•"
        color: Theme.secondary
        font.pixelSize: Theme.callout
        Accessible.ignored: true
    }
    Row {
        id: network

        spacing: 5

        Symbol {
            id: networkSymbol

            objectName: "footerSymbol"
            anchors.verticalCenter: parent.verticalCenter
            name: root.isOnline ? "wifi" : "wifi.slash"
            size: Math.round(Theme.callout * 1.2)
            color: root.networkColor
        }
        PlainLabel {
            id: networkText

            objectName: "footerText"
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(Math.ceil(metrics.advanceWidth) + 1,
                            root.width - networkSymbol.width - network.spacing)
            text: root.isOnline ? "Online — Zero data transmitted" : "Offline — Fully local"
            color: root.networkColor
            font.pixelSize: Theme.callout
            wrapMode: Text.Wrap

            TextMetrics {
                id: metrics

                font: networkText.font
                text: networkText.text
            }
        }
    }
}
