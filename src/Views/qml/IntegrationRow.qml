// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// The state of one integration, and where it can be asked for, a button for that.
Item {
    id: root

    required property string symbol
    required property string label
    required property string detail
    required property bool isActive
    property bool canAsk: false

    signal asked()

    Layout.fillWidth: true
    implicitHeight: Math.max(feature.height, ask.visible ? ask.height : 0)

    FeatureRow {
        id: feature

        anchors.verticalCenter: parent.verticalCenter
        width: (ask.visible ? ask.x : dot.x) - 10
        symbol: root.symbol
        title: root.label
        detail: root.detail
        symbolSize: Math.round(Theme.callout * 1.2)
        tint: root.isActive ? Theme.accent : Theme.secondary
        Accessible.description: root.isActive ? "On" : "Off"
    }
    PushButton {
        id: ask

        objectName: "ask"
        anchors.verticalCenter: parent.verticalCenter
        x: dot.x - width - 10
        visible: root.canAsk && !root.isActive
        text: "Grant Access"
        textSize: Theme.caption
        Accessible.description: root.label
        onClicked: root.asked()
    }
    Rectangle {
        id: dot

        objectName: "dot"
        anchors.verticalCenter: parent.verticalCenter
        x: root.width - width
        width: 6
        height: 6
        radius: 3
        color: root.isActive ? Theme.green : Theme.orange
    }
}
