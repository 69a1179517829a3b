// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// Stands for a page that this version does not have.
Item {
    id: root

    required property int page

    Column {
        anchors.centerIn: parent
        spacing: 10

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: ["house.fill", "gearshape.fill", "lock.shield.fill", "info.circle.fill"][root.page]
            size: 40
            color: Theme.tertiary
        }
        PlainLabel {
            anchors.horizontalCenter: parent.horizontalCenter
            text: ["Home", "Settings", "Privacy", "About"][root.page]
            font.pixelSize: Theme.title3
            font.weight: Font.DemiBold
        }
        PlainLabel {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Not part of this version."
            color: Theme.secondary
            font.pixelSize: Theme.callout
        }
    }
}
