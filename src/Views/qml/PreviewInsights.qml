// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Dugwise

/// What the language model makes of a file, or the button that asks for it.
Column {
    id: root

    required property FilePreview preview
    required property bool isModelAvailable

    spacing: 8

    RowLayout {
        width: parent.width
        spacing: 6

        Symbol {
            name: "sparkles"
            size: Theme.caption
            color: Theme.accent
        }
        SectionTitle {
            Layout.fillWidth: true
            text: "AI Insights"
        }
    }
    Rectangle {
        objectName: "insightsBusy"
        visible: root.preview.isGeneratingInsights
        width: parent.width
        height: busy.height + 20
        radius: 8
        color: Theme.faded(Theme.accent, 0.04)

        RowLayout {
            id: busy

            x: 10
            y: 10
            width: parent.width - 20
            spacing: 8

            BusyIndicator {
                implicitWidth: 20
                implicitHeight: 20
                padding: 0
                running: root.preview.isGeneratingInsights
                palette.dark: Theme.accent
            }
            PlainLabel {
                Layout.fillWidth: true
                text: "Analyzing document..."
                color: Theme.secondary
                font.pixelSize: Theme.caption
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
    Rectangle {
        visible: !root.preview.isGeneratingInsights && root.preview.hasInsights
        width: parent.width
        height: content.height + 20
        radius: 8
        color: Theme.faded(Theme.accent, 0.04)

        InsightsContent {
            id: content

            objectName: "insightsContent"
            x: 10
            y: 10
            width: parent.width - 20
            preview: root.preview
        }
    }
    PushButton {
        objectName: "generateInsights"
        visible: !root.preview.isGeneratingInsights && !root.preview.hasInsights
        enabled: root.isModelAvailable || root.preview.canPreview
        mostWidth: root.width
        text: "Generate AI Insights"
        symbol: "sparkles"
        onClicked: root.preview.generateInsights()
    }
    PlainLabel {
        objectName: "insightsRequirement"
        visible: !root.preview.isGeneratingInsights && !root.preview.hasInsights
                 && !root.isModelAvailable
        width: parent.width
        text: "Requires Apple Intelligence to be enabled."
        color: Theme.tertiary
        font.pixelSize: Theme.caption2
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
