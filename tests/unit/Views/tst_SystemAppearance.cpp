// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SystemAppearance.h"
#include "support/Fakes.h"

#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>
#include <QTest>

namespace dugwise::test {

class TstSystemAppearance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePaletteCountsWhereTheDesktopLeavesItOpen()
    {
        const SystemAppearance alone(nullptr);
        const QSignalSpy changed(&alone, &SystemAppearance::changed);
        QVERIFY(!alone.isDark());
        QVERIFY(!alone.reducesMotion());
        QCOMPARE(alone.textScale(), 1.0);
        QGuiApplication::setPalette(QPalette(QColor(0x20, 0x20, 0x20)));
        QTRY_COMPARE(changed.size(), 1);
        QVERIFY(alone.isDark());

        FakeDesktopAppearance desktop;
        const SystemAppearance appearance(&desktop);
        desktop.handler({.isDark = false});
        QVERIFY(!appearance.isDark());
        desktop.handler({.reducesMotion = true});
        QVERIFY(appearance.isDark());
        QGuiApplication::setPalette(QPalette());
    }

    void aChangeIsTold()
    {
        FakeDesktopAppearance desktop;
        {
            SystemAppearance appearance(&desktop);
            const QSignalSpy changed(&appearance, &SystemAppearance::changed);
            desktop.handler({.isDark = true, .reducesMotion = true, .textScale = 1.5});
            QCOMPARE(changed.size(), 1);
            QVERIFY(appearance.isDark());
            QVERIFY(appearance.reducesMotion());
            QCOMPARE(appearance.textScale(), 1.5);
        }
        QVERIFY(!desktop.handler);
    }
};

} // namespace dugwise::test

QTEST_MAIN(dugwise::test::TstSystemAppearance)
#include "tst_SystemAppearance.moc"
