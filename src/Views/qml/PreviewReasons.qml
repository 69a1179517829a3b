// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Dugwise

/// Why the file matched.
Column {
    id: root

    required property FilePreview preview

    spacing: 8

    SectionTitle {
        width: parent.width
        text: "Match Reasons"
    }
    FlowLayout {
        width: parent.width
        spacing: 6

        Repeater {
            model: root.preview.matchReasons

            Chip {
                required property var modelData

                objectName: "matchReason"
                mostWidth: root.width
                symbol: modelData.icon
                symbolSize: Theme.caption2
                text: modelData.text
            }
        }
    }
}
