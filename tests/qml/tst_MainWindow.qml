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
        root.given.setTextScale(1)
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
        verify(/^\d files indexed across 2 folders$/.test(find("status").text), find("status").text)
        ask(" the budget ")
        compare(root.given.requests, ["the budget"])
        compare(find("inputField").text, "")
        tryVerify(() => root.card(2) !== null)
        tryVerify(() => !find("status"))

        const second = card(2)
        mouseClick(second, second.width / 2, second.height - 20)
        tryVerify(() => second.isSelected)
        verify(!card(1).isSelected)
        compare(find("previewName").text, second.name)
        keyClick(Qt.Key_1, Qt.ControlModifier)
        tryVerify(() => root.card(1).isSelected && !root.card(2).isSelected)

        const before = root.given.opened().length
        mouseClick(findChild(second, "open"))
        mouseClick(findChild(second, "reveal"))
        compare(root.given.opened().length, before + 1)
        verify(root.given.shown().length >= 1)
        verify(root.given.opened()[before].includes(second.name.slice(0, 20)))

        keyClick(Qt.Key_N, Qt.ControlModifier)
        tryVerify(() => find("status") !== null)
        verify(!root.given.session.preview.hasFile)
    }

    /// All that is shown below an item, itself included. What is being taken down has no properties.
    function shown(item) {
        if (!item || !item.visible)
            return []
        let all = [item]
        for (let i = 0; i < item.children.length; ++i)
            all = all.concat(shown(item.children[i]))
        return all
    }

    function texts(item) {
        return shown(item).filter(one => one && one.truncated !== undefined)
    }

    /// The texts of those that reach further right in an item than they may, or have no room.
    function beyond(parts, item, limit) {
        return parts.filter(one => one.width <= 0 || one.mapToItem(item, one.width, 0).x > limit)
                    .map(one => one.text)
    }

    function test_namesAreShownAsTheyAre() {
        const before = root.given.visits()
        ask("budget <img src='" + root.given.picture() + "'> **b**")
        tryVerify(() => root.card(3) !== null)
        const labels = []
        for (const number of [1, 2, 3])
            labels.push(...texts(card(number)).map(text => text.text))
        verify(labels.includes("budget <img src=x> **1**.txt"), labels)
        verify(labels.some(label => label.endsWith("W budget\uFFFDof\uFFFDfdp.txt")), labels)
        const request = shown(find("conversation").itemAtIndex(0)).find(one => one.getText)
        verify(request.getText(0, request.length).startsWith("budget <img src='http"))
        ask("tell me about #1")
        ignoreWarning(/Error decoding/)
        const image = createTemporaryQmlObject(
            "import QtQuick; Image { source: '" + root.given.picture() + "' }", root.window.contentItem)
        tryVerify(() => image.status !== Image.Loading)
        compare(root.given.visits(), before)
        root.given.visit()
        tryVerify(() => root.given.visits() === before + 1) // it would have been noticed
    }

    function test_aLargeTextStaysWithinItsBox() {
        root.window.width = root.window.minimumWidth
        root.window.height = root.window.minimumHeight
        for (const scale of [1, 1.5]) {
            root.given.setTextScale(scale)
            ask("budget")
            for (const number of [1, 2, 3]) {
                find("conversation").stay()
                tryVerify(() => {
                    if (!root.card(number))
                        find("conversation").positionViewAtIndex(number + 1, ListView.Contain)
                    const one = root.card(number)
                    if (!one)
                        return false
                    const parts = root.texts(one).concat(root.findChild(one, "open"))
                    return root.beyond(parts, one, one.width - 60 - 8).length === 0
                })
            }
            const sidebar = find("sidebar")
            tryVerify(() => root.beyond(root.texts(sidebar), sidebar, sidebar.width).length === 0)
            const recent = root.given.session.recentLabels
            tryVerify(() => root.texts(sidebar).every(
                          label => !label.truncated || recent.includes(label.text)))
            wait(300) // Qt warns of rows that are just being made when the list is emptied
            root.given.session.newChat()
            tryVerify(() => root.find("status") !== null)
            waitForRendering(root.window.contentItem)
            tryVerify(() => !texts(find("chatView")).some(
                          item => item.truncated && !item.text.startsWith("Ask about")), 2000)
        }
    }

    function test_cardsAreReachedByKeyboard() {
        ask("budget")
        tryVerify(() => root.card(3) !== null)
        root.card(1).forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Down)
        compare(root.window.activeFocusItem, root.card(2))
        keyClick(Qt.Key_Tab)
        compare(root.window.activeFocusItem.tip, "Open File")
        root.card(2).forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Return)
        verify(root.card(2).isSelected)
        keyClick(Qt.Key_Up)
        compare(root.window.activeFocusItem, root.card(1))
        const list = find("conversation")
        verify(root.card(1).mapToItem(list, 0, 0).y >= 0)
    }

    function test_theFieldHasTheKeyboardAfterAClick() {
        const field = find("inputField")
        field.text = "lease"
        mouseClick(find("send"))
        type("b")
        compare(field.text, "b")
        field.clear()
        tryVerify(() => !root.given.session.isSearching)
    }

    function test_welcomeComesAndGoes() {
        for (let i = 0; i < 20; ++i) {
            ask("lease")
            root.given.session.newChat()
            tryVerify(() => root.find("status") !== null)
            mouseMove(find("chatView"), 200, 100 + i)
        }
    }

    function test_columnsAreRemembered() {
        const before = find("sidebar").width
        mousePress(root.window.contentItem, before, 300)
        mouseMove(root.window.contentItem, before + 30, 300)
        mouseMove(root.window.contentItem, before + 60, 300)
        mouseRelease(root.window.contentItem, before + 60, 300)
        const after = find("sidebar").width
        verify(after > before + 20)
        root.window.close()
        root.window = createTemporaryObject(windowMaker, root)
        tryCompare(find("sidebar"), "width", after)
    }

    function test_aFolderIsAdded() {
        const dialog = findChild(root.window, "folderDialog")
        mouseClick(find("addFolder"))
        tryVerify(() => dialog.visible)
        dialog.selectedFolder = root.given.extraFolder()
        dialog.accept()
        tryVerify(() => find("sidebarFolders").itemAtIndex(2)?.name === "Extra")
        tryVerify(() => root.given.isReady)
        compare(root.given.session.indexer.totalFilesIndexed, 6)
        root.given.session.removeFolder(2)
        tryCompare(root.given.session, "folderCount", 2)
        tryVerify(() => root.given.isReady)
        mouseClick(find("addFolder"))
        tryVerify(() => dialog.visible)
        dialog.reject()
        compare(root.given.session.folderCount, 2)
    }

    function test_aChipIsAskedAsItIsWritten() {
        const ways = [chip => mouseClick(chip), chip => root.given.act(chip, "Press")]
        for (const press of ways) {
            root.given.session.newChat()
            tryVerify(() => find("promptChips"))
            press(find("promptChips").children[2])
            tryVerify(() => !root.given.session.isSearching)
            compare(root.given.requests, ["PDFs about insurance from last month"])
            compare(find("inputField").text, "")
        }
    }

    function test_theSidebarLeadsAndRepeats() {
        ask("lease")
        keyClick(Qt.Key_N, Qt.ControlModifier)
        const ways = [row => mouseClick(row), row => root.given.act(row, "Press")]
        for (const press of ways) {
            root.given.session.newChat()
            root.given.session.page = 2
            const row = find("recentSearch")
            compare(row.label, "lease")
            press(row)
            compare(root.given.session.page, 0)
            tryCompare(root.given, "requests", ["lease"])
            compare(root.given.session.pendingQuery, "")
            tryVerify(() => !root.given.session.isSearching)
        }
    }

    function test_aNewChatIsShownAndTypedIn() {
        const ways = [() => keyClick(Qt.Key_N, Qt.ControlModifier), () => mouseClick(find("newChat"))]
        for (const [page, start] of [[0, ways[0]], [1, ways[0]], [0, ways[1]]]) {
            ask("budget")
            tryVerify(() => root.card(1) !== null)
            card(1).forceActiveFocus(Qt.TabFocusReason)
            root.given.session.page = page
            start()
            compare(root.given.session.page, 0)
            compare(root.given.requests.length, 0)
            type("b")
            compare(find("inputField").text, "b")
            find("inputField").clear()
        }
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
            seen.push(item.text || item.label || item.tip || item.objectName)
        }
        for (const name of ["Home", "Add Folder", "Settings", "Privacy", "About", "New Chat",
                            "Remove folder", "PDFs about insurance from last month"])
            verify(seen.includes(name), name + " in " + seen)
        keyClick(Qt.Key_K, Qt.ControlModifier)
        compare(root.window.activeFocusItem, field)
    }
}
