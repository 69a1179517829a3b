// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtTest
import Dugwise

/// The real window over a sample home, used with mouse and keyboard.
TestCase {
    id: root

    // Given by the test program.
    readonly property var given: sample
    property var window: null

    name: "MainWindow"
    when: windowShown

    Component {
        id: windowMaker

        Main {
            session: root.given.session
        }
    }

    function init() {
        failOnWarning(/.?/)
        Theme.reducesMotion = true
        root.given.session.newChat()
        root.given.session.page = 0
        root.window = createTemporaryObject(windowMaker, root)
        verify(root.window)
        tryVerify(() => root.window.active)
        tryVerify(() => root.given.isReady)
    }

    function find(name) {
        return findChild(root.window.contentItem, name)
    }

    function type(text) {
        for (const letter of text)
            keyClick(letter)
    }

    /// Asks by keyboard, and waits for the answer.
    function ask(text) {
        find("inputField").forceActiveFocus()
        type(text)
        keyClick(Qt.Key_Return)
        tryVerify(() => !root.given.session.isSearching)
    }

    /// The first shown card of a file, by the number on it.
    function card(number) {
        const list = find("conversation")
        for (let row = 0; row < list.count; ++row) {
            const item = list.itemAtIndex(row)
            if (item && item.number === number)
                return item
        }
        return null
    }

    function test_blanksAreNotSent() {
        const field = find("inputField")
        field.forceActiveFocus()
        type("  ")
        verify(!find("send").enabled)
        keyClick(Qt.Key_Return)
        compare(root.given.requests.length, 0)
        compare(field.text, "  ")
        keyClick(Qt.Key_Escape)
        compare(field.text, "")
    }

    function test_aRequestIsAskedByKeyboardAndAnsweredByCards() {
        compare(find("status").text, "3 files indexed across 2 folders")
        ask(" the budget ")
        compare(root.given.requests, ["the budget"])
        compare(find("inputField").text, "")
        tryVerify(() => root.card(2) !== null)
        verify(!find("status"))

        const second = card(2)
        mouseClick(second, second.width / 2, second.height - 20)
        tryVerify(() => second.isSelected)
        verify(!card(1).isSelected)
        compare(find("selectedName").text, second.name)
        keyClick(Qt.Key_1, Qt.ControlModifier)
        tryVerify(() => root.card(1).isSelected && !root.card(2).isSelected)

        const before = root.given.opened().length
        mouseClick(findChild(second, "open"))
        mouseClick(findChild(second, "reveal"))
        compare(root.given.opened().length, before + 1)
        verify(root.given.shown().length >= 1)
        verify(root.given.opened()[before].endsWith(second.name))

        keyClick(Qt.Key_N, Qt.ControlModifier)
        tryVerify(() => find("status") !== null)
        compare(find("selectedName").text, "Select a file to preview")
    }

    function test_aNameIsShownAsItIs() {
        ask("budget")
        tryVerify(() => root.card(2) !== null)
        ask("open #1")
        ask("tell me about #2")
        tryVerify(() => root.find("conversation").count >= 8)
    }

    function test_aChipIsAskedAsItIsWritten() {
        const chips = find("promptChips")
        mouseClick(chips.children[2])
        tryVerify(() => !root.given.session.isSearching)
        compare(root.given.requests, ["PDFs about insurance from last month"])
        compare(find("inputField").text, "")
    }

    function test_theSidebarLeadsAndRepeats() {
        ask("lease")
        keyClick(Qt.Key_N, Qt.ControlModifier)
        root.given.session.page = 2
        const row = find("recentSearch")
        compare(row.text, "lease")
        mouseClick(row)
        compare(root.given.session.page, 0)
        tryCompare(root.given, "requests", ["lease"])
        compare(root.given.session.pendingQuery, "")
        tryVerify(() => !root.given.session.isSearching)
    }

    function test_everythingIsReachedByTab() {
        const field = find("inputField")
        field.forceActiveFocus()
        const seen = []
        for (let i = 0; i < 60; ++i) {
            keyClick(Qt.Key_Tab)
            const item = root.window.activeFocusItem
            if (item === field)
                break
            seen.push(item.text || item.tip || item.objectName)
        }
        for (const name of ["Home", "Add Folder", "Settings", "Privacy", "About", "New Chat",
                            "Remove folder", "PDFs about insurance from last month"])
            verify(seen.includes(name), name + " in " + seen)
        keyClick(Qt.Key_K, Qt.ControlModifier)
        compare(root.window.activeFocusItem, field)
    }
}
