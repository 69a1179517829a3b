// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// The shadow of a rounded rectangle of this item's size, as a child behind its parent:
/// Shadow { anchors.fill: parent; radius: parent.radius; blur: 8; offset: 2 }
/// It needs an item of at least 2 * (radius + blur) + 1 on each side.
Item {
    id: root

    property int radius: 0
    /// How far it reaches beyond the rectangle; it fades over as much within.
    property int blur: 8
    /// How far down it lies.
    property real offset: 2

    readonly property int edge: radius + 2 * blur

    z: -1
    opacity: 0.1
    Accessible.ignored: true

    BorderImage {
        x: -root.blur
        y: root.offset - root.blur
        width: root.width + 2 * root.blur
        height: root.height + 2 * root.blur
        border { left: root.edge; top: root.edge; right: root.edge; bottom: root.edge }
        source: "image://shadow/" + root.radius + "/" + root.blur
        Accessible.ignored: true
    }
}
