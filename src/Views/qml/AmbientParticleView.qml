// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// A field of glowing particles that the pointer draws near and a click stirs up, behind whatever is
/// put into it. It stands still while motion is reduced.
Item {
    id: root

    default property alias content: front.data
    property bool isAnimated: !Theme.reducesMotion
    readonly property alias isMoving: frames.running
    readonly property alias count: canvas.count
    readonly property alias mouseLocation: canvas.mouseLocation

    /// Stirs the particles up at a point of this item, as a click there does that nothing in front
    /// takes.
    function spawnBurst(point: point): void {
        if (root.isAnimated)
            canvas.spawnBurst(point)
    }

    onIsAnimatedChanged: canvas.start()

    ParticleCanvas {
        id: canvas

        anchors.fill: parent
        accent: Theme.accent
        mouseLocation: pointer.hovered ? pointer.point.position : Qt.point(0, 0)
    }
    Item {
        id: front

        anchors.fill: parent
    }
    SeenFrames {
        id: frames

        item: root
        isWanted: root.isAnimated
        onTriggered: canvas.advance(frames.frameTime)
    }
    HoverHandler {
        id: pointer

        enabled: root.isAnimated
    }
    TapHandler {
        onTapped: eventPoint => root.spawnBurst(eventPoint.position)
    }
}
