// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// What this program is, and what it is made of.
ScrollPage {
    id: root

    objectName: "aboutView"
    spacing: 20
    fillsPage: true
    Accessible.name: "About"

    Item { Layout.fillHeight: true }
    Symbol {
        Layout.alignment: Qt.AlignHCenter
        name: "sparkle.magnifyingglass"
        size: 64
        color: Theme.accent
    }
    PlainLabel {
        Layout.fillWidth: true
        text: "Dugwise"
        font.pixelSize: Theme.largeTitle
        font.bold: true
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        Accessible.role: Accessible.Heading
    }
    PlainLabel {
        Layout.fillWidth: true
        text: "Local-First AI File Explorer"
        color: Theme.secondary
        font.pixelSize: Theme.title3
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
    }
    PlainLabel {
        Layout.fillWidth: true
        text: "Version 1.0 MVP"
        color: Theme.tertiary
        font.pixelSize: Theme.caption
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
    }
    ColumnLayout {
        spacing: 8

        PlainLabel {
            Layout.fillWidth: true
            text: "Your files. Your Mac. Your privacy."
            font.pixelSize: Theme.headline
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
        }
        PlainLabel {
            Layout.fillWidth: true
            text: "Nothing is uploaded. Everything runs locally."
            color: Theme.secondary
            font.pixelSize: Theme.subheadline
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
        }
    }
    AboutDetails {
        Layout.alignment: Qt.AlignHCenter
        Layout.maximumWidth: 480 * Theme.textScale
    }
    Item { Layout.fillHeight: true }
}
