// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/FlowLayout.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace dugwise::test {

class TstFlowLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void goesOnInANewLine_data()
    {
        QTest::addColumn<qreal>("width");
        QTest::addColumn<qreal>("spacing");
        QTest::addColumn<QList<QSizeF>>("sizes");
        QTest::addColumn<QList<QPointF>>("positions");
        QTest::addColumn<QSizeF>("size");
        using Sizes = QList<QSizeF>;
        using Points = QList<QPointF>;
        const QSizeF item(40, 20);
        QTest::newRow("none") << 100.0 << 4.0 << Sizes() << Points() << QSizeF(0, 0);
        QTest::newRow("two lines") << 100.0 << 4.0 << Sizes{item, item, item}
                                   << Points{{0, 0}, {44, 0}, {0, 24}} << QSizeF(88, 44);
        QTest::newRow("no width") << 0.0 << 4.0 << Sizes{item, item, item}
                                  << Points{{0, 0}, {0, 24}, {0, 48}} << QSizeF(44, 68);
        QTest::newRow("too wide") << 100.0 << 4.0 << Sizes{{150, 20}} << Points{{0, 0}}
                                  << QSizeF(154, 20);
        QTest::newRow("too wide between others")
            << 100.0 << 4.0 << Sizes{item, {150, 30}, item} << Points{{0, 0}, {0, 24}, {0, 58}}
            << QSizeF(154, 78);
        QTest::newRow("exactly as wide")
            << 84.0 << 4.0 << Sizes{item, item} << Points{{0, 0}, {44, 0}} << QSizeF(88, 20);
        QTest::newRow("a hair too wide")
            << 83.99 << 4.0 << Sizes{item, item} << Points{{0, 0}, {0, 24}} << QSizeF(44, 44);
        QTest::newRow("a line is as high as its highest")
            << 100.0 << 6.0 << Sizes{{40, 10}, {40, 30}, item} << Points{{0, 0}, {46, 0}, {0, 36}}
            << QSizeF(92, 56);
        QTest::newRow("no spacing, and nothing wide")
            << 0.0 << 0.0 << Sizes{{0, 10}, {0, 20}} << Points{{0, 0}, {0, 0}} << QSizeF(0, 20);
    }
    void goesOnInANewLine()
    {
        QFETCH(qreal, width);
        QFETCH(qreal, spacing);
        QFETCH(QList<QSizeF>, sizes);
        const FlowLayout::Arrangement arrangement = FlowLayout::layout(width, sizes, spacing);
        QTEST(arrangement.positions, "positions");
        QTEST(arrangement.size, "size");
    }
};

} // namespace dugwise::test

QTEST_GUILESS_MAIN(dugwise::test::TstFlowLayout)
#include "tst_FlowLayout.moc"
