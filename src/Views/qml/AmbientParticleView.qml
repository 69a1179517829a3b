// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// A field of glowing particles that the pointer draws near and a click stirs up. It stands still
/// while motion is reduced.
ParticleCanvas {
    id: root

    property bool isAnimated: !Theme.reducesMotion
    readonly property alias isMoving: frames.running

    accent: Theme.accent
    mouseLocation: root.placeOf(pointer.point.position)
    onIsAnimatedChanged: root.start()

    /// Where a point of the parent is here; (0, 0) when that is not over this item.
    function placeOf(point: point): point {
        const place = root.mapFromItem(root.parent, point)
        return pointer.hovered && root.contains(place) ? place : Qt.point(0, 0)
    }

    SeenFrames {
        id: frames

        item: root
        isWanted: root.isAnimated
        onTriggered: root.advance(frames.frameTime)
    }
    HoverHandler {
        id: pointer

        parent: root.parent // the pointer is followed beneath the items in front, too
        enabled: root.isAnimated
    }
    TapHandler {
        enabled: root.isAnimated
        onTapped: eventPoint => root.spawnBurst(eventPoint.position)
    }
}
