// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// Laid over an item, answers each click on it with a ring of sparkles. The item below has its
/// clicks as if this were not there.
SparkleCanvas {
    id: root

    property bool isAnimated: !Theme.reducesMotion
    readonly property alias isMoving: frames.running

    accent: Theme.accent

    SeenFrames {
        id: frames

        item: root
        isWanted: root.isAnimated && root.count > 0
        onTriggered: root.refresh()
    }
    PointHandler {
        id: drag

        enabled: root.isAnimated
        onActiveChanged: {
            if (!drag.active)
                root.addBurst(drag.point.position)
        }
    }
}
