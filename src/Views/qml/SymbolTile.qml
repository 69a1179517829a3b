// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// A symbol on a rounded ground of its own colour.
Rectangle {
    id: root

    required property string symbol
    required property color ink
    property real symbolSize: Theme.body

    radius: 8
    color: Theme.faded(ink, 0.12)

    Symbol {
        anchors.centerIn: parent
        name: root.symbol
        size: root.symbolSize * 1.2
        color: root.ink
    }
}
