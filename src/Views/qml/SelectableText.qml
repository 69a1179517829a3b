// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// Plain text that can be selected and copied.
TextEdit {
    readOnly: true
    selectByMouse: true
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.WrapAtWordBoundaryOrAnywhere
    color: Theme.primary
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentInk
    font.pixelSize: Theme.caption
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
