// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// Title of a section of the sidebar.
PlainLabel {
    Layout.leftMargin: 16
    Layout.topMargin: 12
    Layout.bottomMargin: 2
    color: Theme.tertiary
    font.pixelSize: Theme.caption2
    font.weight: Font.DemiBold
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
