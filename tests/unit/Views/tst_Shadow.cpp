// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/ImageProviders.h"
#include "Views/ShadowImageProvider.h"

#include <QQmlComponent>
#include <QQuickView>
#include <QTest>

using namespace Qt::StringLiterals;

namespace dugwise::test {

class TstShadow : public QObject
{
    Q_OBJECT

private:
    static QImage draw(const QString &id)
    {
        ShadowImageProvider provider;
        return provider.requestImage(id, nullptr, QSize());
    }

private Q_SLOTS:
    void aShadowFadesEvenly_data()
    {
        QTest::addColumn<int>("radius");
        QTest::addColumn<int>("blur");
        QTest::newRow("card") << 12 << 8;
        QTest::newRow("square") << 0 << 4;
        QTest::newRow("wide") << 4 << 20;
    }
    void aShadowFadesEvenly()
    {
        QFETCH(int, radius);
        QFETCH(int, blur);
        const QImage image = draw(u"%1/%2"_s.arg(radius).arg(blur));
        const int edge = radius + 2 * blur;
        QCOMPARE(image.size(), QSize(2 * edge + 1, 2 * edge + 1));
        const QImage mirrored = image.mirrored(true, true);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                QVERIFY(std::abs(qAlpha(image.pixel(x, y)) - qAlpha(mirrored.pixel(x, y))) <= 2);
        }
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
        QCOMPARE(qAlpha(image.pixel(edge, edge)), 255);
        int before = 0;
        for (int x = 0; x <= edge; ++x) { // from outside inwards, along the middle
            const int alpha = qAlpha(image.pixel(x, edge));
            QVERIFY(alpha >= before);
            before = alpha;
        }
        QVERIFY(qAlpha(image.pixel(0, edge)) < 26);
        const int outside = qAlpha(image.pixel(blur - 1, edge));
        const int inside = qAlpha(image.pixel(blur, edge));
        QVERIFY(std::abs(outside + inside - 255) <= 2); // the edge is half way
    }

    void withoutBlurItIsTheShape()
    {
        const QImage image = draw(u"0/0"_s);
        QCOMPARE(image.size(), QSize(1, 1));
        QCOMPARE(qAlpha(image.pixel(0, 0)), 255);
        QCOMPARE(draw(u"x/-3/y"_s), image);
        QVERIFY(draw(u"999999999/999999999"_s).width() < 400);
    }

    /// With the renderer that has no shaders, too: that is what there is offscreen.
    void aShadowLiesBehindItsItem()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        QQuickView view;
        addImageProviders(*view.engine());
        QQmlComponent component(view.engine());
        component.setData(
            "import QtQuick; import Dugwise\n"
            "Rectangle { width: 200; height: 120; color: 'white'\n"
            "  Rectangle { x: 40; y: 30; width: 120; height: 60; radius: 8; color: 'lime'\n"
            "    Shadow { anchors.fill: parent; radius: 8; blur: 6; offset: 4; opacity: 0.5 } } }",
            QUrl());
        QObject *const item = component.create();
        QVERIFY2(item, qPrintable(component.errorString()));
        view.setContent(QUrl(), &component, item);
        view.show();
        const QImage shown = view.grabWindow();
        const auto grey = [&shown](int x, int y) { return qRed(shown.pixel(x, y)); };
        QCOMPARE(shown.pixelColor(100, 60), QColor(Qt::green));
        QCOMPARE(shown.pixelColor(42, 60), QColor(Qt::green));
        QVERIFY(grey(100, 91) < 170);  // just below, where half of the shadow is left
        QVERIFY(grey(100, 98) < 255);  // offset and blur reach
        QCOMPARE(grey(100, 102), 255); // and no farther
        QCOMPARE(grey(100, 26), 255);
        QVERIFY(grey(38, 60) < 255);
        QCOMPARE(grey(30, 60), 255);
        QCOMPARE(grey(38, 60), grey(161, 60));
    }
};

} // namespace dugwise::test

QTEST_MAIN(dugwise::test::TstShadow)
#include "tst_Shadow.moc"
