// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls

/// A button that the keyboard and assistive programs press just as the mouse does.
AbstractButton {
    id: root

    function press(): void {
        if (root.enabled)
            root.clicked()
    }

    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: root.press()
    Keys.onReturnPressed: root.press()
    Keys.onEnterPressed: root.press()
}
