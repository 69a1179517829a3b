// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Dugwise

/// Text that is shown as it is, whatever it holds: no markup, on one line unless it wraps.
Text {
    textFormat: Text.PlainText
    color: Theme.primary
    font.pixelSize: Theme.body
    elide: wrapMode === Text.NoWrap ? Text.ElideRight : Text.ElideNone
    maximumLineCount: wrapMode === Text.NoWrap ? 1 : 1000000
}
