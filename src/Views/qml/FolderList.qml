// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls
import Dugwise

/// The indexed folders, in rows of FolderRow. Many of them scroll by themselves, so that what follows
/// stays in reach. The keyboard goes on to the next one when one is removed.
ListView {
    id: root

    required property Session session
    /// What the keyboard goes to when none is left.
    required property Item after
    required property real mostHeight

    /// Puts the keyboard on the button of a row nearby, made if need be; false where there is none.
    function go(by: int): bool {
        const row = root.currentIndex + by
        if (row < 0 || row >= root.count)
            return false
        root.positionViewAtIndex(row, ListView.Contain)
        root.currentIndex = row
        return true
    }

    implicitHeight: Math.min(mostHeight, contentHeight)
    interactive: contentHeight > mostHeight
    keyNavigationEnabled: false
    highlightFollowsCurrentItem: false
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    model: session.folders
    ScrollBar.vertical: ScrollBar { visible: root.interactive }
    Accessible.role: Accessible.List
    Accessible.name: "Indexed Folders"

    Keys.onUpPressed: event => event.accepted = root.go(-1)
    Keys.onDownPressed: event => event.accepted = root.go(1)
    Keys.onTabPressed: {
        if (!root.go(1))
            root.after.forceActiveFocus(Qt.TabFocusReason)
    }
    Keys.onBacktabPressed: {
        if (!root.go(-1))
            root.nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
    }
    onCurrentItemChanged: {
        if (!root.activeFocus)
            return
        const row = root.currentItem as FolderRow
        if (row)
            row.button.forceActiveFocus(Qt.TabFocusReason)
        else if (root.count === 0)
            root.after.forceActiveFocus(Qt.TabFocusReason)
    }

    FocusFollower { flickable: root }
}
