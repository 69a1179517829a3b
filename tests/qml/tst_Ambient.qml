// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtTest
import Dugwise

Item {
    id: root

    width: 400
    height: 300

    TapHandler {} // takes part in each click, as what lies behind does
    Component {
        id: fieldMaker

        AmbientParticleView {
            anchors.fill: parent
        }
    }
    Component {
        id: windowMaker

        Window {
            readonly property alias field: fieldOfWindow

            width: 200
            height: 200

            AmbientParticleView {
                id: fieldOfWindow

                anchors.fill: parent
            }
        }
    }
    Component {
        id: tilesMaker

        Item {
            id: tiles

            property int clicks: 0
            property alias sparkles: sparkles

            anchors.fill: parent

            MouseArea {
                anchors.fill: parent
                hoverEnabled: true
                onClicked: ++tiles.clicks
            }
            SparkleArea {
                id: sparkles

                anchors.fill: parent
            }
        }
    }
    Component {
        id: logoMaker

        AnimatedLogo {}
    }
    Component {
        id: springMaker

        SpringMotion {}
    }

    TestCase {
        id: test

        name: "Ambient"
        when: windowShown

        function init() {
            failOnWarning(/.?/)
            Theme.reducesMotion = false
        }

        function cleanupTestCase() {
            Theme.reducesMotion = false
        }

        /// Whether the item's picture changes from frame to frame.
        function moves(item: Item): bool {
            const before = grabImage(item)
            wait(150)
            return !before.equals(grabImage(item))
        }

        function test_fieldMovesWhileItIsSeen() {
            const field = createTemporaryObject(fieldMaker, root)
            compare(field.count, 81)
            verify(moves(field))
            field.visible = false
            compare(field.count, 0)
            verify(!field.isMoving)
            field.visible = true
            compare(field.count, 81)
            verify(field.isMoving)
            field.parent = null
            verify(!field.isMoving)
        }

        function test_fieldMovesInWindowsThatAreSeen() {
            const field = createTemporaryObject(windowMaker, root).field
            verify(!field.isMoving)
            field.Window.window.visible = true
            verify(field.isMoving)
            field.Window.window.showMinimized()
            tryCompare(field, "isMoving", false)
            field.Window.window.showNormal()
            tryCompare(field, "isMoving", true)
            field.Window.window.visible = false
            verify(!field.isMoving)
        }

        function test_fieldStandsStillWithReducedMotion() {
            Theme.reducesMotion = true
            const blank = grabImage(root)
            const field = createTemporaryObject(fieldMaker, root)
            verify(!moves(field))
            verify(!grabImage(root).equals(blank))
            mouseClick(field, 50, 50)
            compare(field.count, 81)
            Theme.reducesMotion = false
            verify(moves(field))
        }

        function test_clickThrowsOutTrails() {
            const field = createTemporaryObject(fieldMaker, root)
            mouseClick(field, 120, 80)
            compare(field.count, 101)
            tryCompare(field, "count", 81, 3000)
        }

        function test_pointerIsFollowed() {
            const field = createTemporaryObject(fieldMaker, root)
            mouseMove(field, 120, 80)
            tryCompare(field, "mouseLocation", Qt.point(120, 80))
            createTemporaryObject(tilesMaker, field)
            mouseMove(field, 60, 70)
            tryCompare(field, "mouseLocation", Qt.point(60, 70)) // beneath what has the pointer
            mouseMove(root, -20, -20)
            tryCompare(field, "mouseLocation", Qt.point(0, 0))
            field.anchors.leftMargin = 100
            mouseMove(root, 160, 70)
            tryCompare(field, "mouseLocation", Qt.point(60, 70))
            mouseMove(root, 90, 70) // beside it
            tryCompare(field, "mouseLocation", Qt.point(0, 0))
        }

        /// The middle of what differs from the picture's first pixel.
        function middleOf(picture): point {
            const ground = picture.pixel(0, 0)
            const xs = []
            const ys = []
            for (let y = 0; y < picture.height; ++y) {
                for (let x = 0; x < picture.width; ++x) {
                    if (picture.pixel(x, y) !== ground) {
                        xs.push(x)
                        ys.push(y)
                    }
                }
            }
            return Qt.point((Math.min(...xs) + Math.max(...xs) + 1) / 2,
                            (Math.min(...ys) + Math.max(...ys) + 1) / 2)
        }

        function test_clicksPassThroughSparkles() {
            const tiles = createTemporaryObject(tilesMaker, root, {"anchors.leftMargin": 200})
            verify(!tiles.sparkles.isMoving)
            mouseClick(tiles, 100, 150)
            compare(tiles.clicks, 1)
            compare(tiles.sparkles.count, 1)
            compare(middleOf(grabImage(tiles)), Qt.point(100, 150))
            verify(moves(tiles))
            tryCompare(tiles.sparkles, "count", 0, 3000)
            verify(!tiles.sparkles.isMoving)
        }

        function test_sparklesAtTheEndOfADrag() {
            const tiles = createTemporaryObject(tilesMaker, root, {"anchors.leftMargin": 200})
            mousePress(tiles, 30, 30)
            mouseMove(tiles, 60, 90)
            mouseMove(tiles, 90, 140)
            compare(tiles.sparkles.count, 0)
            mouseRelease(tiles, 90, 140)
            compare(tiles.sparkles.count, 1)
            compare(middleOf(grabImage(tiles)), Qt.point(90, 140))
        }

        function test_noSparklesWithReducedMotion() {
            Theme.reducesMotion = true
            const tiles = createTemporaryObject(tilesMaker, root)
            mouseClick(tiles, 200, 150)
            compare(tiles.clicks, 1)
            compare(tiles.sparkles.count, 0)
        }

        function test_logoComesIn() {
            const logo = createTemporaryObject(logoMaker, root)
            const symbol = findChild(logo, "symbol")
            compare([logo.glowOpacity, logo.ringScale], [0, 0.5])
            compare([symbol.scale, symbol.rotation, symbol.opacity], [0.3, -30, 0])
            tryCompare(logo, "glowOpacity", 1, 3000)
            compare(logo.ringScale, 1)
            tryCompare(symbol, "scale", 1)
            compare([symbol.rotation, symbol.opacity], [0, 1])
            logo.visible = false
            compare(symbol.opacity, 0)
            logo.visible = true
            tryCompare(logo, "glowOpacity", 0)
        }

        function test_logoIsThereAtOnceWithReducedMotion() {
            Theme.reducesMotion = true
            const logo = createTemporaryObject(logoMaker, root)
            compare(logo.glowOpacity, 1)
            compare(findChild(logo, "symbol").scale, 1)
        }

        function test_spring() {
            const spring = createTemporaryObject(springMaker, root, {delay: 0.2, response: 0.1})
            compare(spring.value, 0)
            spring.running = true
            wait(100)
            compare(spring.value, 0)
            tryCompare(spring, "settled", true)
            compare(spring.value, 1)
            spring.running = false
            compare(spring.value, 0)
            verify(!spring.settled)
            spring.running = true
            Theme.reducesMotion = true; // in the middle of it
            compare(spring.value, 1)
            verify(spring.settled)
            Theme.reducesMotion = false
            compare(spring.value, 1)
        }
    }
}
