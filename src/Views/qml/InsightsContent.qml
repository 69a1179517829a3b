// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Dugwise

/// What the language model says of a file.
Column {
    id: root

    required property FilePreview preview

    spacing: 8

    component Title: PlainLabel {
        color: Theme.secondary
        font.pixelSize: Theme.caption2
        font.weight: Font.DemiBold
    }

    Chip {
        mostWidth: root.width
        symbol: "doc.text"
        text: root.preview.documentType
        textWeight: Font.Medium
        ink: Theme.accent
    }
    SelectableText {
        objectName: "insightsSummary"
        width: parent.width
        text: root.preview.summary
    }
    Title {
        visible: root.preview.keyPoints.length > 0
        text: "Key Points"
    }
    Repeater {
        model: root.preview.keyPoints

        Row {
            id: point

            required property string modelData

            objectName: "keyPoint"
            width: root.width
            spacing: 4

            PlainLabel {
                id: bullet

                text: "•"
                font.pixelSize: Theme.caption
            }
            SelectableText {
                width: point.width - bullet.width - point.spacing
                text: point.modelData
            }
        }
    }
    Title {
        visible: root.preview.entities.length > 0
        text: "Key Entities"
    }
    FlowLayout {
        visible: root.preview.entities.length > 0
        width: parent.width
        spacing: 4

        Repeater {
            model: root.preview.entities

            Chip {
                required property string modelData

                objectName: "entity"
                mostWidth: root.width
                text: modelData
                textSize: Theme.caption2
                horizontalPadding: 6
                verticalPadding: 2
                color: Theme.faded(Theme.secondary, 0.12)
            }
        }
    }
}
