// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Window.h"
#include "support/SampleHome.h"

#include <QGuiApplication>
#include <QTest>
#include <QWindow>

namespace dugwise::test {

class TstWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void comingToTheFrontKeepsTheSize()
    {
        SampleHome home;
        AppState state(home.platform, AppServices(home.platform));
        FileIndexer indexer(home.platform);
        NetworkMonitor network(nullptr);
        Session session(home.platform, state, indexer, network);
        Window window(session);
        QVERIFY(window.isOpen());
        QWindow *const shown = QGuiApplication::topLevelWindows().value(0);
        QVERIFY(shown);
        QWindow other;
        other.show();
        for (const Qt::WindowStates size :
             {Qt::WindowNoState, Qt::WindowMaximized, Qt::WindowFullScreen}) {
            for (const Qt::WindowStates before : {size, size | Qt::WindowMinimized}) {
                shown->setWindowStates(before);
                other.requestActivate();
                QTRY_VERIFY(!shown->isActive());
                window.raise({});
                QTRY_VERIFY(shown->isActive());
                QCOMPARE(shown->windowStates(), size);
            }
        }
        QTRY_VERIFY(!indexer.isBusy());
    }
};

} // namespace dugwise::test

QTEST_MAIN(dugwise::test::TstWindow)
#include "tst_Window.moc"
