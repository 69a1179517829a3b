// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Dugwise

/// Asks whether something may be read, over the window, which waits meanwhile. Escape puts the
/// question off.
Popup {
    id: root

    /// Null where nothing is asked in the window.
    required property SheetAccessPrompt prompt
    readonly property bool isAsking: prompt ? prompt.isAsking : false

    objectName: "accessSheet"
    parent: Overlay.overlay
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    width: Math.min(parent.width - 48, 440 * Math.max(1, Theme.textScale))
    padding: 24
    opacity: Math.min(1, motion.value)
    scale: 0.92 + 0.08 * motion.value
    visible: root.isAsking
    modal: true
    focus: true
    closePolicy: Popup.CloseOnEscape
    onAboutToHide: {
        if (root.prompt)
            root.prompt.dismiss()
    }
    // Where a Return that was meant for something else does no harm.
    onOpened: {
        later.forceActiveFocus(Qt.TabFocusReason)
        later.focusReason = Qt.TabFocusReason // had it the focus before, its ring shows all the same
    }

    Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, Theme.isDark ? 0.5 : 0.25)
    }

    background: Rectangle {
        radius: 14
        color: Theme.controlBackground
        border.width: 1
        border.color: Theme.faded(Theme.secondary, 0.15)

        Shadow {
            anchors.fill: parent
            radius: 14
            blur: 24
            offset: 10
            opacity: 0.25
        }
    }

    contentItem: ColumnLayout {
        spacing: 14
        Accessible.role: Accessible.Dialog
        Accessible.name: title.text
        Accessible.description: whatIsRead.text + " " + promise.text

        RowLayout {
            spacing: 14

            SymbolTile {
                implicitWidth: Theme.title2 * 2.2
                implicitHeight: implicitWidth
                radius: 10
                symbol: root.prompt ? root.prompt.symbol : ""
                symbolSize: Theme.title2
                ink: Theme.accent
            }
            PlainLabel {
                id: title

                Layout.fillWidth: true
                Layout.fillHeight: true
                objectName: "question"
                text: root.prompt ? root.prompt.title : ""
                font.pixelSize: Theme.title3
                font.weight: Font.DemiBold
                verticalAlignment: Text.AlignVCenter
                wrapMode: Text.Wrap
            }
        }
        PlainLabel {
            id: whatIsRead

            Layout.fillWidth: true
            text: root.prompt ? root.prompt.whatIsRead : ""
            color: Theme.secondary
            lineHeight: 1.15
            wrapMode: Text.Wrap
        }
        RowLayout {
            spacing: 8

            Symbol {
                name: "lock.shield.fill"
                size: Theme.callout * 1.2
                color: Theme.green
            }
            PlainLabel {
                id: promise

                Layout.fillWidth: true
                text: root.prompt ? root.prompt.promise : ""
                color: Theme.secondary
                font.pixelSize: Theme.callout
                wrapMode: Text.Wrap
            }
        }
        RowLayout {
            Layout.topMargin: 6
            spacing: 10

            PlainButton {
                id: later

                objectName: "later"
                padding: 8
                text: "Not Now"
                textColor: Theme.secondary
                onClicked: root.prompt.dismiss()
            }
            Item { Layout.fillWidth: true }
            PushButton {
                objectName: "deny"
                text: "Don't Allow"
                tint: Theme.primary
                onClicked: root.prompt.answer(false)
            }
            PushButton {
                objectName: "allow"
                text: "Allow"
                isFilled: true
                onClicked: root.prompt.answer(true)
            }
        }
    }

    SpringMotion {
        id: motion

        response: 0.4
        dampingFraction: 0.8
        running: root.visible
    }
}
