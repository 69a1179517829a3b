// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Dugwise

/// A switch, and beside it what it is for.
Switch {
    id: root

    readonly property real knob: Math.round(16 * Theme.textScale)

    function turn(): void {
        root.toggle()
        root.toggled()
    }

    Layout.fillWidth: true
    padding: 0
    spacing: 10
    implicitHeight: Math.max(implicitContentHeight, implicitIndicatorHeight)
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.onPressAction: root.turn()
    Accessible.onToggleAction: root.turn()
    Keys.onReturnPressed: root.turn()
    Keys.onEnterPressed: root.turn()

    indicator: Rectangle {
        y: (root.height - height) / 2
        implicitWidth: 2 * root.knob + 2
        implicitHeight: root.knob + 4
        radius: height / 2
        color: root.checked ? Theme.accent : Theme.faded(Theme.gray, root.hovered ? 0.55 : 0.4)

        Behavior on color {
            enabled: !Theme.reducesMotion

            ColorAnimation { duration: 150 }
        }

        Rectangle {
            x: 2 + root.visualPosition * (parent.width - width - 4)
            y: 2
            width: root.knob
            height: root.knob
            radius: height / 2
            color: "#ffffff"

            Behavior on x {
                enabled: !Theme.reducesMotion && !root.down

                SpringAnimation { spring: 3.9; damping: 0.4; epsilon: 0.05 }
            }
        }
        FocusRing {
            control: root
            radius: parent.radius + 2
        }
    }
    contentItem: PlainLabel {
        leftPadding: root.indicator.width + root.spacing
        text: root.text
        font.pixelSize: Theme.callout
        wrapMode: Text.Wrap
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
