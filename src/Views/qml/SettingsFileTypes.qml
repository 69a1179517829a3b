// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Dugwise

/// Which files are indexed.
TitledCard {
    id: root

    required property Session session

    title: "File Types"

    SwitchRow {
        objectName: "includeHiddenFiles"
        text: "Include hidden files"
        checked: root.session.settings.includeHiddenFiles
        onToggled: root.session.settings.includeHiddenFiles = checked
    }
    SwitchRow {
        objectName: "includeScreenshots"
        text: "Include screenshots"
        checked: root.session.settings.includeScreenshots
        onToggled: root.session.settings.includeScreenshots = checked
    }
    SwitchRow {
        objectName: "includePDFs"
        text: "Include PDFs (uses PDFKit for text extraction)"
        checked: root.session.settings.includePDFs
        onToggled: root.session.settings.includePDFs = checked
    }
    NoteRow {
        symbol: "info.circle"
        text: "A change takes effect when folders are indexed next, as by Re-index All."
    }
}
