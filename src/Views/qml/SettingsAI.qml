// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Dugwise

/// Whether there is a language model, and what it is for.
TitledCard {
    id: root

    required property Session session

    title: "AI Features"
    spacing: 8

    RowLayout {
        spacing: 8

        Rectangle {
            objectName: "modelDot"
            implicitWidth: 8
            implicitHeight: 8
            radius: 4
            color: root.session.isModelAvailable ? Theme.green : Theme.orange
        }
        PlainLabel {
            objectName: "aiStatus"
            Layout.fillWidth: true
            text: root.session.settings.aiStatusLabel
            font.pixelSize: Theme.callout
            font.weight: Font.Medium
            wrapMode: Text.Wrap
        }
    }
    Repeater {
        model: [
            {
                title: "Query Understanding",
                detail: "LLM parses natural language into structured search intent"
            },
            {
                title: "Semantic Search",
                detail: "NLEmbedding finds files by meaning, not just keywords"
            },
            {
                title: "Result Re-ranking",
                detail: "LLM reorders results by relevance to your query"
            },
            {
                title: "Document Insights",
                detail: "AI summarizes files with key points and entities"
            },
            {
                title: "Cross-App Resolution",
                detail: "Joins contacts, calendar, mail, and messages for context"
            }
        ]

        FeatureRow {
            required property var modelData

            symbol: "sparkles"
            symbolSize: Theme.caption
            frameWidth: 14
            title: modelData.title
            detail: modelData.detail
        }
    }
}
