// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Dugwise

/// The facts of a file, a row each.
Column {
    id: root

    required property FilePreview preview

    spacing: 8

    TextMetrics {
        id: longest

        text: "Downloaded"
        font.pixelSize: Theme.caption
    }
    Repeater {
        model: root.preview.facts

        RowLayout {
            id: fact

            required property var modelData

            objectName: "metadataRow"
            width: root.width
            spacing: 8

            Item {
                Layout.alignment: Qt.AlignTop
                implicitWidth: Math.max(16, Theme.caption)
                implicitHeight: Math.max(label.implicitHeight, Theme.caption)

                Symbol {
                    anchors.centerIn: parent
                    name: fact.modelData.icon
                    size: Theme.caption * 1.1
                    color: Theme.secondary
                }
            }
            PlainLabel {
                id: label

                Layout.alignment: Qt.AlignTop
                Layout.preferredWidth: Math.max(60, Math.ceil(longest.advanceWidth) + 1)
                text: fact.modelData.label
                color: Theme.secondary
                font.pixelSize: Theme.caption
            }
            SelectableText {
                Layout.fillWidth: true
                Layout.alignment: Qt.AlignTop
                text: fact.modelData.value
            }
        }
    }
}
