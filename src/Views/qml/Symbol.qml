// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// A symbol by the system's name for it, in one colour.
Item {
    id: root

    property string name
    /// Side of the square that it is drawn in.
    property real size: 16
    property color color: Theme.primary

    readonly property int pixels: Math.round(size * Screen.devicePixelRatio)

    implicitWidth: size
    implicitHeight: size
    Accessible.ignored: true

    Image {
        // As large as its pixels, so that none of them is spread over two of the screen's.
        width: root.pixels / Screen.devicePixelRatio
        height: width
        sourceSize.width: root.pixels
        sourceSize.height: root.pixels
        source: root.name === "" ? "" : "image://symbol/" + root.name + "/" + root.color.toString().slice(1)
        Accessible.ignored: true
    }
}
