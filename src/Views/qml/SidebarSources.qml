// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Dugwise

/// The data sources, each with its state.
Column {
    id: root

    required property Session session
    readonly property DataSources sources: DataSources { session: root.session }

    spacing: 2

    Repeater {
        model: root.sources.all

        DataSourceRow {
            required property DataSource modelData

            width: root.width
            symbol: modelData.symbol
            name: modelData.name
            isActive: modelData.isActive
            status: modelData.status
        }
    }
}
