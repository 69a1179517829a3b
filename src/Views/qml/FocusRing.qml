// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// Shows which control the keyboard is on.
Rectangle {
    id: root

    required property Item control

    anchors.fill: parent
    anchors.margins: -2
    radius: 8
    color: "transparent"
    border.width: 2
    border.color: Theme.accent
    visible: root.control.activeFocus && root.control.visualFocus
}
