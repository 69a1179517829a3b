// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtTest
import Dugwise

/// Settings, privacy and about in the real window, used with mouse and keyboard.
TestCase {
    id: root

    // Given by the test program.
    readonly property var given: sample
    readonly property Session session: given.session
    property var window: null

    name: "Pages"
    when: windowShown

    Component {
        id: windowMaker

        Main {
            session: root.session
        }
    }
    Component {
        id: rowMaker

        IntegrationRow {
            symbol: "calendar"
            label: "Calendar"
            detail: "a detail"
            isActive: false
        }
    }

    function init() {
        failOnWarning(/.?/)
        root.given.setTextScale(1)
        root.given.setConnected(true)
        root.window = createTemporaryObject(windowMaker, root)
        verify(root.window)
        tryVerify(() => root.window.active)
        tryVerify(() => root.given.isReady)
        root.session.page = 1
        tryVerify(() => root.find("settingsView"))
    }

    function find(name) {
        return findChild(root.window.contentItem, name)
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

    /// Scrolls to an item and clicks it.
    function click(item) {
        if (root.window.activeFocusItem !== item) {
            item.forceActiveFocus(Qt.TabFocusReason)
            waitForRendering(root.window.contentItem)
        }
        mouseClick(item)
    }

    function addByDialog(folder) {
        const dialog = findChild(root.window, "folderDialog")
        click(find("addFolderInSettings"))
        tryVerify(() => dialog.visible)
        dialog.selectedFolder = folder
        dialog.accept()
        tryVerify(() => root.given.isReady)
    }

    function rows() {
        return shown(find("settingsView")).filter(one => one.path !== undefined)
    }

    function test_foldersAreAddedAndRemoved() {
        const folders = Array.from(root.session.indexer.indexedFolderURLs)
        const total = root.session.indexer.totalFilesIndexed
        compare(rows().length, 2)
        verify(rows()[0].path.endsWith("/Documents"), rows()[0].path)
        verify(!find("noFolders").visible)
        verify(find("reindexAll").visible)
        compare(find("filesIndexed").text, "Files: " + total + " indexed")
        while (rows().length > 0) {
            const before = rows().length
            click(findChild(rows()[0], "removeFolder"))
            tryVerify(() => root.rows().length === before - 1)
        }
        tryVerify(() => root.given.isReady)
        verify(find("noFolders").visible)
        compare(find("noFolders").text, "No folders added yet.")
        verify(root.window.activeFocusItem === find("addFolderInSettings"))
        verify(!find("reindexAll").visible)
        for (const folder of folders)
            addByDialog(folder)
        tryVerify(() => root.rows().length === 2)
        verify(find("reindexAll").visible)
        tryVerify(() => find("filesIndexed").text === "Files: " + total + " indexed")
    }

    function test_reindexAllIsForWhenNothingIsIndexed() {
        const button = find("reindexAll")
        const indexer = root.session.indexer
        const total = indexer.totalFilesIndexed
        const seen = []
        const note = () => seen.push(indexer.isIndexing !== button.enabled)
        indexer.isIndexingChanged.connect(note)
        click(button)
        tryVerify(() => seen.length > 0)
        tryVerify(() => root.given.isReady)
        indexer.isIndexingChanged.disconnect(note)
        verify(seen.length >= 2 && seen.every(isRight => isRight), seen)
        verify(button.enabled)
        compare(indexer.totalFilesIndexed, total)

        verify(!find("indexingOff").visible)
        click(find("enableLocalIndexing"))
        verify(!button.enabled)
        verify(find("indexingOff").visible)
        click(find("enableLocalIndexing"))
        verify(button.enabled)
    }

    function test_switchesAreStored_data() {
        return [{ tag: "enableLocalIndexing", usual: true },
                { tag: "includeHiddenFiles", usual: false },
                { tag: "includeScreenshots", usual: true },
                { tag: "includePDFs", usual: true },
                { tag: "cloudSyncEnabled", usual: false }]
    }
    function test_switchesAreStored(data) {
        const button = find(data.tag)
        compare(button.checked, data.usual)
        compare(root.given.stored(data.tag) ?? data.usual, data.usual)
        click(button)
        compare(button.checked, !data.usual)
        compare(root.given.stored(data.tag), !data.usual)
        root.session.page = 2
        root.session.page = 1
        const again = find(data.tag)
        compare(again.checked, !data.usual)
        again.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Space)
        compare(root.given.stored(data.tag), data.usual)
        keyClick(Qt.Key_Return)
        compare(root.given.stored(data.tag), !data.usual)
        keyClick(Qt.Key_Return)
        compare(root.given.stored(data.tag), data.usual)
        compare(again.checked, data.usual)
        for (const action of ["Toggle", "Press"]) {
            root.given.act(again, action)
            compare(root.given.stored(data.tag), again.checked)
            compare(again.checked, action === "Toggle" ? !data.usual : data.usual)
        }
    }

    function test_integrationsTellTheirState() {
        const contacts = find("contactsRow")
        compare(contacts.detail, "Grant contacts access to resolve 'from Sarah' to email addresses")
        verify(Qt.colorEqual(findChild(contacts, "dot").color, Theme.orange))
        compare(find("calendarRow").detail,
                "Grant calendar access to enable date context from events")
        compare(find("messagesRow").detail,
                "Requires Full Disk Access in System Settings > Privacy")
        verify(!findChild(find("messagesRow"), "ask").visible)
        for (const name of ["calendarRow", "contactsRow"])
            compare(findChild(find(name), "ask").visible, find(name).canAsk)
        compare(find("aiStatus").text, root.session.settings.aiStatusLabel)

        const row = createTemporaryObject(rowMaker, root.window.contentItem)
        const ask = findChild(row, "ask")
        const asked = createTemporaryQmlObject("import QtTest; SignalSpy { signalName: 'asked' }", root)
        asked.target = row
        verify(!ask.visible)
        row.canAsk = true
        verify(ask.visible)
        ask.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Return)
        compare(asked.count, 1)
        row.isActive = true
        verify(!ask.visible)
        verify(Qt.colorEqual(findChild(row, "dot").color, Theme.green))
    }

    function test_clearingIsAskedAboutOnce() {
        const indexer = root.session.indexer
        const total = indexer.totalFilesIndexed
        verify(total > 0)
        click(find("clear"))
        verify(!find("clear").visible && find("confirmClear").visible)
        verify(find("clearQuestion").text.endsWith("your folders are then indexed again."))
        root.session.settings.enableLocalIndexing = false
        verify(find("clearQuestion").text.endsWith("Your own files stay as they are."))
        root.session.settings.enableLocalIndexing = true
        compare(root.window.activeFocusItem, find("cancelClear"))
        const page = find("settingsView")
        tryVerify(() => find("cancelClear").mapToItem(page, 0, 30).y < page.height) // in sight
        keyClick(Qt.Key_Escape)
        verify(find("clear").visible && !find("confirmClear").visible)
        compare(root.window.activeFocusItem, find("clear"))
        keyClick(Qt.Key_Return)
        click(find("cancelClear"))
        verify(!find("confirmClear").visible)
        verify(root.given.isReady)
        compare(indexer.totalFilesIndexed, total)

        click(find("clear"))
        click(find("confirmClear"))
        compare(indexer.totalFilesIndexed, 0)
        verify(!find("confirmClear").visible)
        tryVerify(() => root.given.isReady)
        compare(indexer.totalFilesIndexed, total)
        // Who leaves the page is asked anew.
        click(find("clear"))
        root.session.page = 0
        root.session.page = 1
        verify(!find("confirmClear").visible)
    }

    function test_privacyIsLive() {
        root.session.page = 2
        const states = [
            { isConnected: true, symbol: "wifi", value: "Online", color: Theme.blue,
              note: "Your Mac is online", footer: "Online — Zero data transmitted" },
            { isConnected: false, symbol: "wifi.slash", value: "Offline", color: Theme.green,
              note: "Your Mac is offline", footer: "Offline — Fully local" }
        ]
        for (const state of states.concat(states)) {
            root.given.setConnected(state.isConnected)
            const pill = find("networkPill")
            compare(pill.symbol, state.symbol)
            compare(pill.value, state.value)
            verify(Qt.colorEqual(pill.tint, state.color))
            verify(find("networkNote").text.startsWith(state.note), find("networkNote").text)
            compare(find("footerText").text, state.footer)
            compare(find("footerSymbol").name, state.symbol)
            compare(find("dataSentPill").value, "None")
        }
    }

    function test_aboutTellsVersionAndBuild() {
        root.session.page = 3
        verify(/^\d+\.\d+\.\d+$/.test(find("version").value), find("version").value)
        verify(/^\w+, .* \d+.*, Qt 6\.\d+\.\d+$/.test(find("build").value), find("build").value)
    }

    function test_nothingIsCut_data() {
        const rows = []
        for (const page of ["settingsView", "privacyView", "aboutView"]) {
            for (const scale of [1, 1.5])
                rows.push({ tag: page + ", " + scale, page: page, scale: scale })
        }
        return rows
    }
    function test_nothingIsCut(data) {
        root.given.setTextScale(data.scale)
        root.window.width = root.window.minimumWidth
        root.window.height = root.window.minimumHeight
        root.session.page = ["", "settingsView", "privacyView", "aboutView"].indexOf(data.page)
        const page = find(data.page)
        waitForRendering(page)
        if (data.page === "settingsView") {
            click(find("clear"))
            tryVerify(() => page.atYEnd)
        }
        verify(page.contentHeight > page.height)
        const right = page.width - page.margin
        const isWhole = text => !text.truncated && text.width > 0
                          && text.contentWidth <= text.width + 1
                          && text.contentHeight <= text.height + 1
                          && text.mapToItem(page, text.width, 0).x <= right + 1
        tryVerify(() => texts(page).length > 15 && texts(page).every(isWhole), 2000,
                  texts(page).filter(text => !isWhole(text)).map(text => text.text).join("|"))
        // The dots stand beside their texts.
        for (const row of shown(page).filter(one => one.isActive !== undefined)) {
            const dot = findChild(row, "dot")
            fuzzyCompare(dot.y + dot.height / 2, row.height / 2, 1)
            compare(dot.x + dot.width, row.width)
        }
        // Nothing lies upon something else, nor beyond the end.
        const last = texts(page).pop()
        verify(last.mapToItem(page.contentItem, 0, last.height).y <= page.contentHeight)
        keyClick(Qt.Key_PageDown)
        verify(page.contentY > 0)
        for (let i = 0; i < 20; ++i)
            keyClick(Qt.Key_PageDown)
        fuzzyCompare(page.contentY, page.contentHeight - page.height, 1)
    }

    function test_aTallWindowStretchesNothing() {
        root.window.height = 2000
        for (const [position, name] of [[1, "settingsView"], [2, "privacyView"], [3, "aboutView"]]) {
            root.session.page = position
            const page = find(name)
            waitForRendering(page)
            // About alone stands in the middle.
            compare(page.contentHeight < page.height, name !== "aboutView", name)
            verify(page.contentHeight <= page.height, name)
        }
    }

    function test_manyFoldersKeepTheirPlace() {
        root.given.addFolders(30)
        tryVerify(() => root.session.folderCount === 32 && root.given.isReady, 30000)
        const button = "removeFolder"
        for (const name of ["settingsFolders", "sidebarFolders"]) {
            const list = find(name)
            const count = list.count
            compare(count, root.session.folderCount)
            verify(shown(list).filter(one => one.objectName === button).length < count)
            list.positionViewAtIndex(10, ListView.Beginning)
            const place = list.contentY
            verify(place > 0)
            const next = findChild(list.itemAtIndex(13), button)
            findChild(list.itemAtIndex(12), button).forceActiveFocus(Qt.TabFocusReason)
            keyClick(Qt.Key_Return)
            tryCompare(list, "count", count - 1)
            tryVerify(() => root.window.activeFocusItem === next)
            verify(next.visualFocus)
            compare(list.contentY, place)
            keyClick(Qt.Key_Up)
            verify(root.window.activeFocusItem === findChild(list.itemAtIndex(11), button))
            for (const [key, end] of [[Qt.Key_Tab, count - 2], [Qt.Key_Backtab, 0]]) {
                for (let row = list.currentIndex; row !== end; row = list.currentIndex) {
                    keyClick(key)
                    compare(Math.abs(list.currentIndex - row), 1)
                    const focused = root.window.activeFocusItem
                    verify(focused === findChild(list.itemAtIndex(list.currentIndex), button))
                    const top = focused.mapToItem(list, 0, 0).y
                    verify(top >= 0 && top + focused.height <= list.height, list.currentIndex)
                }
            }
            keyClick(Qt.Key_Backtab)
            verify(!list.activeFocus)
            tryVerify(() => root.given.isReady)
        }
        while (root.session.folderCount > 2) {
            const count = root.session.folderCount
            root.session.removeFolder(count - 1)
            tryVerify(() => root.session.folderCount === count - 1)
        }
        tryVerify(() => root.given.isReady, 30000)
    }

    function test_everythingIsReachedByTab() {
        const page = find("settingsView")
        const start = find("enableLocalIndexing")
        start.forceActiveFocus(Qt.TabFocusReason)
        const seen = []
        for (let i = 0; i < 60; ++i) {
            const item = root.window.activeFocusItem
            const isOfPage = root.shown(page).includes(item)
            if (isOfPage) {
                verify(item.Accessible.name !== "" && item.visualFocus, item)
                const top = item.mapToItem(page, 0, 0).y
                verify(top >= 0 && top + item.height <= page.height, item.text + " is out of sight")
                seen.push(item.text)
            }
            keyClick(Qt.Key_Tab)
            if (root.window.activeFocusItem === start)
                break
        }
        compare(seen.join("|"),
                "Enable local indexing|Remove|Remove|Add Folder|Re-index All|Include hidden files|"
                + "Include screenshots|Include PDFs (uses PDFKit for text extraction)|"
                + "Enable cloud sync|Clear All Indexed Data")
    }
}
