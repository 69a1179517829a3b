// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// The way from 0 to 1 on a spring: begins when `running` becomes true, and is back at 0 when that
/// ends. Where motion is reduced it is at 1 at once.
QtObject {
    id: root

    /// Seconds of a swing without damping.
    property real response: 0.5
    property real dampingFraction: 0.7
    /// Seconds before it begins.
    property real delay: 0
    property bool running: false
    property bool isAnimated: !Theme.reducesMotion

    /// May go beyond 1 on the way.
    readonly property alias value: motion.value
    readonly property alias settled: motion.isSettled

    readonly property FrameAnimation frames: FrameAnimation {
        id: motion

        property real value: 0
        property bool isSettled: false

        function moveTo(seconds: real) {
            motion.isSettled = Spring.isSettled(root.response, root.dampingFraction, seconds)
            motion.value = motion.isSettled
                    ? 1 : Spring.position(root.response, root.dampingFraction, seconds)
        }

        function begin() {
            motion.isSettled = root.running && !root.isAnimated
            motion.value = motion.isSettled ? 1 : 0
        }

        running: root.running && !motion.isSettled
        onTriggered: motion.moveTo(motion.elapsedTime - root.delay)
    }

    onRunningChanged: motion.begin()
    onIsAnimatedChanged: {
        if (!motion.isSettled)
            motion.begin()
    }
    Component.onCompleted: motion.begin()
}
