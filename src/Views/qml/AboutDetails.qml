// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Dugwise

/// Version, build and licence of the program, and the libraries it uses with theirs.
TitledCard {
    id: root

    readonly property var libraries: [
        ["Qt", "LGPL-3.0"],
        ["QCoro", "MIT"],
        ["ICU", "Unicode licence"],
        ["Poppler", "GPL-2.0-or-later"],
        ["SQLite", "public domain"],
        ["Hyperscan", "BSD-3-Clause"],
        ["RapidJSON", "MIT"],
        ["GMime", "LGPL-2.1-or-later"],
        ["libical", "LGPL-2.1 or MPL-2.0"],
        ["libevent", "BSD-3-Clause"],
        ["libseccomp", "LGPL-2.1"],
        ["Tracker SPARQL", "LGPL-2.1-or-later"],
        ["xxHash", "BSD-2-Clause"],
        ["WordNet", "WordNet licence"],
        ["Material icons", "Apache-2.0"]
    ]

    title: "This program"
    spacing: 6

    DetailRow {
        objectName: "version"
        label: "Version"
        value: Qt.application.version
    }
    DetailRow {
        objectName: "build"
        label: "Build"
        value: BuildFacts.text
    }
    DetailRow {
        label: "Licence"
        value: "GPL-3.0-or-later"
    }
    PlainLabel {
        Layout.fillWidth: true
        Layout.topMargin: 8
        text: "Libraries and data"
        font.pixelSize: Theme.headline
        font.weight: Font.DemiBold
        wrapMode: Text.Wrap
        Accessible.role: Accessible.Heading
    }
    Repeater {
        model: root.libraries

        DetailRow {
            required property var modelData

            label: modelData[0]
            value: modelData[1]
        }
    }
}
