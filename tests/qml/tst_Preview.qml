// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls
import QtTest
import Dugwise

/// The preview panel of the real window over a sample home.
TestCase {
    id: root

    // Given by the test program.
    readonly property var given: sample
    readonly property var preview: given.session.preview
    property var window: null

    name: "Preview"
    when: windowShown

    Component {
        id: windowMaker

        Main {
            session: root.given.session
        }
    }

    SignalSpy {
        id: busyTurns

        signalName: "visibleChanged"
    }

    readonly property string insights: JSON.stringify({
        summary: "What it costs <b>this</b> year.",
        keyPoints: ["First, all of the rooms are painted", "Second, nails"],
        documentType: "a budget of some length, with notes",
        entities: ["April", "Mossbury <img src=x>", "340", "An association of owners with a long name"],
    })

    function init() {
        failOnWarning(/.?/)
        root.given.setTextScale(1)
        root.given.setModel(false)
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

    /// All items of that name that are shown.
    function all(name) {
        return shown(find("previewPanel")).filter(item => item.objectName === name)
    }

    function shown(item) {
        if (!item.visible)
            return []
        let found = [item]
        for (let i = 0; i < item.children.length; ++i)
            found = found.concat(shown(item.children[i]))
        return found
    }

    function texts() {
        return shown(find("previewPanel")).filter(item => item.text !== undefined)
                                          .map(item => item.text)
    }

    /// Selects the file that is found by a request, and returns its number.
    function select(request, name) {
        root.given.session.submit(request)
        tryVerify(() => !root.given.session.isSearching)
        let number = 0
        do {
            root.given.session.selectNumber(++number)
        } while (number < 5 && !root.preview.name.includes(name))
        verify(root.preview.name.includes(name), root.preview.name)
        tryVerify(() => !root.preview.isReading)
        waitForRendering(root.window.contentItem)
        return number
    }

    function test_withoutASelectionThereIsAHint() {
        compare(texts(), ["Select a file to preview", "You can also say \"tell me about #1\""])
        select("the budget", "2026.md")
        verify(!find("previewHint").visible)
        verify(find("previewScroll").visible)
        root.given.session.newChat()
        compare(texts().length, 2)
    }

    function test_whatIsShownOfAFile() {
        select("the budget", "2026.md")
        const shownTexts = texts()
        for (const text of ["budget 2026.md", "Markdown", "AI Insights", "Path", "Extension", "MD",
                            "Size", "8 bytes", "Modified", "Created", "Match Reasons",
                            "Filename match", "Content Preview", "Open File", "Reveal in Finder"])
            verify(shownTexts.includes(text), text + " in " + shownTexts)
        compare(all("metadataRow").length, 5)
        compare(all("matchReason").length, root.preview.matchReasons.length)
        const text = all("previewText")[0]
        compare(text.getText(0, text.length), "a budget")
        compare(text.getFormattedText(0, text.length).match(/background-color/g).length, 1)
        verify(all("noText").length === 0)
        verify(find("previewPanel").width >= 260)

        const opened = root.given.opened().length
        const reveal = all("previewReveal")[0]
        all("previewOpen")[0].forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Return)
        compare(root.given.opened().length, opened + 1)
        keyClick(Qt.Key_Tab)
        compare(root.window.activeFocusItem, reveal)
        keyClick(Qt.Key_Space)
        verify(root.given.shown()[root.given.shown().length - 1].endsWith("budget 2026.md"))
    }

    function test_markupInAFileIsText() {
        const before = root.given.visits()
        root.given.write("Downloads/lease.txt", "<img src='" + root.given.picture() + "'> **b**")
        const number = select("the lease", "lease.txt")
        const text = all("previewText")[0]
        verify(text.getText(0, text.length).startsWith("<img src='http://127"), text.getText(0, 99))
        root.given.write("Downloads/lease.txt", "landlord\r\n\tand tenant")
        compare(root.given.visits(), before)

        // Selected once more, it is read again.
        root.given.session.selectNumber(number)
        tryVerify(() => !root.preview.isReading)
        const again = all("previewText")[0].getText(0, 99)
        compare(again.split(/[\u2028\u2029]/), ["landlord", "    and tenant"])
        root.given.write("Downloads/lease.txt", "landlord and tenant")
    }

    function test_aFileThatIsGoneHasNoText() {
        select("the lease", "lease.txt")
        compare(all("previewText").length, 1)
        root.given.hide("Downloads/lease.txt", true)
        root.given.session.newChat()
        select("the lease", "lease.txt")
        compare(all("previewText").length, 0)
        compare(all("noText").length, 1)
        compare(all("metadataRow").length, 5)
        root.given.hide("Downloads/lease.txt", false)
    }

    function test_whenInsightsCanBeAskedFor_data() {
        return [
            { tag: "text", request: "the lease", name: "lease.txt", model: false, enabled: true },
            { tag: "text, model", request: "the lease", name: "lease.txt", model: true, enabled: true },
            { tag: "no text", request: "the letter", name: "letter.docx", model: false, enabled: false },
            { tag: "no text, model", request: "the letter", name: "letter.docx", model: true, enabled: true },
        ]
    }
    function test_whenInsightsCanBeAskedFor(row) {
        root.given.setModel(row.model)
        root.given.session.lookForModel()
        select(row.request, row.name)
        compare(all("generateInsights").length, 1)
        compare(all("generateInsights")[0].enabled, row.enabled)
        compare(all("insightsRequirement").length, row.model ? 0 : 1)
        if (!row.enabled)
            root.given.act(all("generateInsights")[0], "Press")
        compare(all("insightsContent").length + all("insightsBusy").length, 0)
    }

    function test_insightsBelongToOneFile() {
        select("the budget", "2026.md")
        root.given.setModel(true, root.insights)
        busyTurns.target = find("insightsBusy")
        busyTurns.clear()
        mouseClick(all("generateInsights")[0])
        tryVerify(() => root.all("insightsContent").length === 1)
        compare(busyTurns.count, 2) // it came and went
        compare(all("insightsBusy").length + all("generateInsights").length, 0)
        compare(all("keyPoint").length, 2)
        compare(all("entity").length, 4)
        const shownTexts = texts()
        for (const text of ["What it costs <b>this</b> year.", "Key Points", "Second, nails",
                            "Key Entities", "Mossbury <img src=x>"])
            verify(shownTexts.includes(text), text)

        const number = root.preview.name
        for (let other = 1; other <= 3; ++other) {
            root.given.session.selectNumber(other)
            compare(all("insightsContent").length, root.preview.name === number ? 1 : 0)
            compare(all("generateInsights").length, root.preview.name === number ? 0 : 1)
        }
        root.given.setModel(true, root.insights)
        root.given.session.submit("tell me about #1")
        tryVerify(() => root.all("insightsContent").length === 1)
        tryVerify(() => !root.given.session.isSearching)
        root.given.session.newChat()
        compare(all("insightsContent").length, 0)
    }

    function test_nothingIsCut_data() {
        return [{ tag: "usual", scale: 1 }, { tag: "large", scale: 1.5 }]
    }
    function test_nothingIsCut(row) {
        root.given.setTextScale(row.scale)
        select("the budget", "W budget")
        const panel = find("previewPanel")
        panel.SplitView.preferredWidth = 260
        tryCompare(panel, "width", 260)
        root.given.setModel(true, root.insights)
        root.preview.generateInsights()
        tryVerify(() => root.all("insightsContent").length === 1)
        waitForRendering(root.window.contentItem)
        const ends = shown(panel).filter(item => item.text && item.objectName !== "previewName")
        verify(ends.length > 20)
        tryVerify(() => ends.every(item => item.mapToItem(panel, item.width, 0).x <= 260 - 15))
        compare(ends.filter(item => item.truncated).map(item => item.text), [])
        const scroll = find("previewScroll")
        const last = all("previewReveal")[0]
        verify(last.mapToItem(scroll.contentItem, 0, last.height).y <= scroll.contentHeight)
        last.forceActiveFocus(Qt.TabFocusReason)
        verify(last.mapToItem(scroll, 0, last.height).y <= scroll.height)
    }

    function test_thePanelWithTheKeyboardIsTurned() {
        root.given.setTextScale(1.5)
        root.window.height = root.window.minimumHeight
        select("the budget", "2026.md")
        const scroll = find("previewScroll")
        all("generateInsights")[0].forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_PageDown)
        verify(scroll.contentY > 100, scroll.contentY)
        keyClick(Qt.Key_PageDown)
        keyClick(Qt.Key_PageDown)
        fuzzyCompare(scroll.contentY, scroll.contentHeight - scroll.height, 1)
        find("inputField").forceActiveFocus()
        keyClick(Qt.Key_PageUp)
        fuzzyCompare(scroll.contentY, scroll.contentHeight - scroll.height, 1)
    }

    function test_selectingThroughTheCards() {
        select("the budget", "2026.md")
        for (let i = 0; i < 100; ++i)
            root.given.session.selectNumber(i % 3 + 1)
        tryVerify(() => !root.preview.isReading)
        verify(root.preview.hasText)
    }
}
