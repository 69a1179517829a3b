// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// The state of one integration, and where it can be asked for, a button for that.
RowLayout {
    id: root

    required property string symbol
    required property string label
    required property string detail
    required property bool isActive
    property bool canAsk: false

    signal asked()

    Layout.fillWidth: true
    spacing: 10

    FeatureRow {
        symbol: root.symbol
        title: root.label
        detail: root.detail
        symbolSize: Math.round(Theme.callout * 1.2)
        tint: root.isActive ? Theme.accent : Theme.secondary
        Accessible.description: root.isActive ? "On" : "Off"
    }
    PushButton {
        objectName: "ask"
        visible: root.canAsk && !root.isActive
        text: "Grant Access"
        textSize: Theme.caption
        Accessible.description: root.label
        onClicked: root.asked()
    }
    Rectangle {
        objectName: "dot"
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: root.isActive ? Theme.green : Theme.orange
    }
}
