// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick

/// Colours and sizes of all views. Sizes are in device-independent pixels.
QtObject {
    id: root

    property bool isDark: false
    /// Whether nothing may move for show.
    property bool reducesMotion: false
    /// How much larger than usual the desktop's text is.
    property real textScale: 1

    readonly property color accent: isDark ? "#2ba9bf" : "#0a8ea3"
    readonly property color blue: isDark ? "#4a9eff" : "#0a6fe0"
    readonly property color green: isDark ? "#32d35a" : "#1f8a3d"
    readonly property color orange: isDark ? "#ff9f0a" : "#c45f00"
    readonly property color red: isDark ? "#ff5a50" : "#d0271d"
    readonly property color purple: isDark ? "#c77dff" : "#8e3cc4"
    readonly property color teal: accent
    readonly property color gray: isDark ? "#98989d" : "#6e6e73"

    readonly property color primary: isDark ? "#f2f2f4" : "#1d1d1f"
    readonly property color secondary: isDark ? "#b4b4ba" : "#5c5c62"
    readonly property color tertiary: isDark ? "#8a8a90" : "#85858b"
    readonly property color windowBackground: isDark ? "#1c1c1f" : "#f6f6f8"
    readonly property color sidebarBackground: isDark ? "#242428" : "#eceef0"
    readonly property color controlBackground: isDark ? "#2a2a2e" : "#ffffff"
    readonly property color separator: isDark ? "#3a3a3f" : "#d9d9de"
    readonly property color accentInk: "#ffffff"

    readonly property real largeTitle: 26 * textScale
    readonly property real title2: 20 * textScale
    readonly property real title3: 17 * textScale
    readonly property real body: 14 * textScale
    readonly property real headline: 14 * textScale
    readonly property real callout: 13 * textScale
    readonly property real subheadline: 13 * textScale
    readonly property real caption: 12 * textScale
    readonly property real caption2: 11 * textScale

    /// A line's width as whole pixels of the screen: others are painted uneven.
    function inPixels(width: real, pixelRatio: real): real {
        return Math.round(width * pixelRatio) / pixelRatio
    }

    /// A colour of this theme by its name; gray for one that it does not have.
    function named(name: string): color {
        switch (name) {
        case "red": return root.red
        case "blue": return root.blue
        case "purple": return root.purple
        case "green": return root.green
        case "orange": return root.orange
        case "teal": return root.teal
        default: return root.gray
        }
    }

    function faded(base: color, opacity: real): color {
        return Qt.rgba(base.r, base.g, base.b, opacity)
    }
}
