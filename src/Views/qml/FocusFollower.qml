// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// Scrolls to the control that the keyboard is on.
QtObject {
    id: root

    required property Flickable flickable
    readonly property Item focused: flickable.Window.activeFocusItem

    /// The area was scrolled.
    signal moved()

    function isInside(item: Item): bool {
        for (let above = item; above; above = above.parent) {
            if (above === root.flickable.contentItem)
                return true
        }
        return false
    }

    onFocusedChanged: {
        if (!root.focused || !root.isInside(root.focused))
            return
        const area = root.flickable
        const top = root.focused.mapToItem(area.contentItem, 0, 0).y
        const bottom = top + root.focused.height
        if (top < area.contentY)
            area.contentY = Math.max(area.originY, top - 4)
        else if (bottom > area.contentY + area.height)
            area.contentY = bottom + 4 - area.height
        else
            return
        root.moved()
    }
}
