// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// A card: its title, and its content under one another.
Item {
    id: root

    required property string title
    property real spacing: 10
    default property alias content: column.data

    Layout.fillWidth: true
    implicitHeight: column.implicitHeight + 32
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    CardGround { anchors.fill: parent }
    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.margins: 16
        spacing: root.spacing

        PlainLabel {
            Layout.fillWidth: true
            text: root.title
            font.pixelSize: Theme.headline
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
        }
    }
}
