// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtTest
import Dugwise

/// The questions of the start, in the real window, answered with mouse and keyboard.
TestCase {
    id: root

    // Given by the test program.
    readonly property var given: sample
    property var window: null
    property var sheet: null

    name: "AccessSheet"
    when: windowShown

    Component {
        id: windowMaker

        Main {
            session: root.given.session
        }
    }

    function init() {
        failOnWarning(/.?/)
        root.given.moveToSources()
        root.window = createTemporaryObject(windowMaker, root)
        verify(root.window)
        tryVerify(() => root.window.active)
        root.sheet = findChild(root.window, "accessSheet")
        tryVerify(() => root.sheet.opened)
    }

    function cleanup() {
        root.window.destroy()
        tryVerify(() => !root.window)
    }

    function find(name) {
        return findChild(root.sheet.contentItem, name)
    }

    function question() {
        return find("question").text
    }

    /// All that is shown below an item, itself included.
    function shown(item) {
        if (!item.visible)
            return []
        let all = [item]
        for (let i = 0; i < item.children.length; ++i)
            all = all.concat(shown(item.children[i]))
        return all
    }

    /// What the sidebar says of a data source.
    function state(name) {
        return shown(findChild(root.window.contentItem, "sidebar"))
                .find(item => item.name === name && item.status).status
    }

    function test_oneQuestionAfterTheOther() {
        compare(question(), "May Dugwise read your calendar?")
        compare(state("Calendar"), "No Access")
        mouseClick(find("allow"))
        tryVerify(() => root.sheet.opened && root.question() === "May Dugwise read your contacts?")
        mouseClick(find("deny"))
        tryVerify(() => !root.sheet.visible)
        tryVerify(() => root.state("Calendar") === "Connected")
        compare(state("Contacts"), "No Access")
        compare(root.given.accessAnswer("calendar"), true)
        compare(root.given.accessAnswer("contacts"), false)
    }

    function test_noAnswerDecidesNothing() {
        keyClick(Qt.Key_Escape)
        tryVerify(() => root.sheet.opened && root.question().includes("contacts"))
        verify(find("later").visualFocus)
        mouseClick(find("later"))
        tryVerify(() => !root.sheet.visible)
        compare(root.given.accessAnswer("calendar"), undefined)
        compare(root.given.accessAnswer("contacts"), undefined)
        compare(state("Calendar"), "No Access")
        tryCompare(findChild(root.window.contentItem, "inputField"), "activeFocus", true)
    }

    function test_theKeyboardStaysInTheSheet() {
        const names = ["Not Now", "Don't Allow", "Allow"]
        for (let i = 0; i < 7; ++i) {
            compare(root.window.activeFocusItem.text, names[i % 3])
            verify(root.window.activeFocusItem.visualFocus)
            compare(root.window.activeFocusItem.Accessible.name, names[i % 3])
            keyClick(Qt.Key_Tab)
        }
        keyClick(Qt.Key_X)
        keyClick(Qt.Key_K, Qt.ControlModifier)
        compare(findChild(root.window.contentItem, "inputField").text, "")
        compare(root.window.activeFocusItem.text, "Don't Allow")
        keyClick(Qt.Key_Return)
        tryVerify(() => root.sheet.opened && root.question().includes("contacts"))
        compare(root.given.accessAnswer("calendar"), false)
        compare(root.window.activeFocusItem.text, "Not Now")
        verify(root.window.activeFocusItem.visualFocus)
        keyClick(Qt.Key_Tab, Qt.ShiftModifier)
        keyClick(Qt.Key_Return)
        tryVerify(() => root.state("Contacts") === "Connected")
    }

    function test_theWindowWaits() {
        const sidebar = findChild(root.window.contentItem, "sidebar")
        const settings = shown(sidebar).find(item => item.label === "Settings")
        mouseClick(settings)
        mouseClick(root.window.contentItem, 10, 10)
        compare(root.given.session.page, 0)
        verify(root.sheet.opened)
        compare(root.sheet.contentItem.Accessible.role, Accessible.Dialog)
        verify(root.sheet.contentItem.Accessible.description.includes("nothing leaves this machine"))
    }

    function test_aLargeTextStaysWithinTheSheet() {
        root.window.width = root.window.minimumWidth
        root.window.height = root.window.minimumHeight
        for (const scale of [1, 1.5, 2]) {
            root.given.setTextScale(scale, scale > 1)
            waitForRendering(root.window.contentItem)
            const box = root.sheet.contentItem
            verify(root.sheet.y >= 0 && root.sheet.y + root.sheet.height <= root.window.height)
            for (const item of shown(box)) {
                const end = item.mapToItem(box, item.width, item.height)
                verify(end.x <= box.width + 1 && end.y <= box.height + 1, item)
                verify(!item.truncated, item.text)
            }
        }
    }

    function test_settingsAskAgain() {
        mouseClick(find("deny"))
        tryVerify(() => root.sheet.opened && root.question().includes("contacts"))
        mouseClick(find("deny"))
        tryVerify(() => !root.sheet.visible)
        root.given.session.page = 1
        const row = findChild(root.window.contentItem, "contactsRow")
        const button = findChild(row, "ask")
        for (const answer of ["later", "deny", "allow"]) {
            tryVerify(() => button.visible)
            button.forceActiveFocus(Qt.TabFocusReason)
            keyClick(Qt.Key_Return)
            tryVerify(() => root.sheet.opened && root.question().includes("contacts"))
            verify(!row.isActive)
            mouseClick(find(answer))
            tryVerify(() => !root.sheet.visible)
            tryVerify(() => root.given.accessAnswer("contacts") === (answer === "allow"))
        }
        tryVerify(() => row.isActive)
        compare(row.detail, "Connected — resolving names to emails")
        verify(!button.visible)
        compare(state("Contacts"), "Connected")
        compare(root.given.accessAnswer("calendar"), false)
        verify(findChild(findChild(root.window.contentItem, "calendarRow"), "ask").visible)
        root.given.session.page = 0
    }
}
