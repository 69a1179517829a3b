// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// The product's icon, which springs into place before a glow and a ring when it is shown.
Item {
    id: root

    property bool isAnimated: !Theme.reducesMotion
    readonly property real glowOpacity: root.isAnimated ? glow.progress : 1
    readonly property real ringScale: 0.5 + 0.5 * root.glowOpacity

    implicitWidth: 160
    implicitHeight: 160

    SpringMotion {
        id: spring

        response: 0.8
        dampingFraction: 0.6
        isAnimated: root.isAnimated
        running: root.visible
    }
    SequentialAnimation {
        running: root.visible && root.isAnimated

        PropertyAction {
            target: glow
            property: "progress"
            value: 0
        }
        PauseAnimation { duration: 300 }
        NumberAnimation {
            target: glow
            property: "progress"
            to: 1
            duration: 1200
            easing.type: Easing.BezierSpline
            easing.bezierCurve: [0, 0, 0.58, 1, 1, 1] // "ease-out" of CSS
        }
    }
    GlowDisc {
        id: glow

        property real progress: 0

        anchors.centerIn: parent
        width: 160
        height: 160
        color: Theme.faded(Theme.accent, 0.3)
        scale: root.ringScale
        opacity: root.glowOpacity
    }
    Rectangle {
        anchors.centerIn: parent
        width: 100
        height: 100
        radius: 50
        color: "transparent"
        border.width: 1
        border.color: Theme.faded(Theme.accent, 0.15)
        antialiasing: true
        scale: root.ringScale * 1.2
        opacity: root.glowOpacity * 0.6
    }
    Symbol {
        objectName: "symbol"
        anchors.centerIn: parent
        name: "sparkle.magnifyingglass"
        size: 48
        color: Theme.accent
        scale: 0.3 + 0.7 * spring.value
        rotation: -30 * (1 - spring.value)
        opacity: spring.value
    }
}
