// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Dugwise

/// The field for a request, and the button that sends it.
Rectangle {
    id: root

    required property Session session
    property alias text: field.text
    readonly property bool isEmpty: field.text.trim() === ""

    function submit(): void {
        const request = field.text
        field.clear()
        if (!root.session.submit(request))
            field.text = request
        field.forceActiveFocus() // what was clicked to get here may be gone or disabled now
    }

    function focusField(): void {
        field.forceActiveFocus()
        field.selectAll()
    }

    implicitHeight: row.implicitHeight + 24
    radius: 12
    color: Theme.controlBackground
    border.width: Theme.inPixels(field.activeFocus ? 1.5 : 1, Screen.devicePixelRatio)
    border.color: field.activeFocus ? Theme.accent : Theme.faded(Theme.secondary, 0.2)

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: 16
        anchors.rightMargin: 16
        anchors.topMargin: 12
        anchors.bottomMargin: 12
        spacing: 10

        TextField {
            id: field

            Layout.fillWidth: true
            objectName: "inputField"
            padding: 0
            focus: true
            maximumLength: 100000
            color: Theme.primary
            selectionColor: Theme.accent
            selectedTextColor: Theme.accentInk
            placeholderText: "Ask about your files, emails, messages..."
            placeholderTextColor: Theme.tertiary
            font.pixelSize: Theme.body
            selectByMouse: true
            background: null
            Accessible.name: placeholderText
            onAccepted: root.submit()
            Keys.onEscapePressed: field.clear()
        }
        PlainButton {
            objectName: "send"
            padding: 0
            symbol: "arrow.up.circle.fill"
            symbolSize: Theme.title2 * 1.2
            tint: root.isEmpty ? Theme.secondary : Theme.accent
            enabled: !root.isEmpty
            Accessible.name: "Send"
            onClicked: root.submit()
        }
    }
}
