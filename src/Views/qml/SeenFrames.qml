// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// The frames of the display, for as long as the item that they move can be seen.
FrameAnimation {
    id: root

    required property Item item
    property bool isWanted: true
    readonly property int visibility: root.item.Window.visibility

    running: root.isWanted && root.item.visible && root.visibility !== Window.Hidden
             && root.visibility !== Window.Minimized
}
