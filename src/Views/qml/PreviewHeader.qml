// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// A file's icon, name and type.
RowLayout {
    id: root

    required property FilePreview preview

    spacing: 12

    SymbolTile {
        Layout.alignment: Qt.AlignTop
        implicitWidth: 48
        implicitHeight: 48
        radius: 10
        symbol: root.preview.symbol
        symbolSize: Math.min(Theme.title2, 34)
        ink: Theme.accent
    }
    ColumnLayout {
        Layout.fillWidth: true
        spacing: 4

        PlainLabel {
            Layout.fillWidth: true
            objectName: "previewName"
            text: root.preview.name
            font.weight: Font.DemiBold
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            maximumLineCount: 3
            elide: Text.ElideRight
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Capsule {
            text: root.preview.typeName
            textSize: Theme.caption
            verticalPadding: 2
            ground: Theme.faded(Theme.accent, 0.1)
        }
    }
}
