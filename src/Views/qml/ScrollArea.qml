// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls
import Dugwise

/// An area that scrolls, by pages too, and follows the keyboard.
Flickable {
    id: root

    readonly property bool hasKeyboard: follower.isInside(follower.focused)

    function turnPages(count: int): void {
        root.contentY = Math.max(0, Math.min(root.contentHeight - root.height,
                                             root.contentY + count * root.height * 0.9))
    }

    contentWidth: width
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    ScrollBar.vertical: ScrollBar {}

    FocusFollower {
        id: follower

        flickable: root
    }
}
