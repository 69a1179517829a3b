// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQml

/// Something that can be searched, and its state.
QtObject {
    required property string symbol
    required property string name
    required property bool isActive
    required property string status
}
