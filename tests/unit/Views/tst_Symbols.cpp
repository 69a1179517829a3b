// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/ImageProviders.h"
#include "Views/SymbolImageProvider.h"
#include "Views/SymbolTable.h"

#include <QLoggingCategory>
#include <QPainter>
#include <QProcess>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

using namespace Qt::StringLiterals;

namespace dugwise::test {

class TstSymbols : public QObject
{
    Q_OBJECT

private:
    SymbolImageProvider m_provider{SymbolImageProvider::installedFont()};

    static QImage draw(SymbolImageProvider &provider, const QString &id, int pixels)
    {
        QSize size;
        const QImage image = provider.requestImage(id, &size, QSize(pixels, pixels));
        return size == QSize(pixels, pixels) ? image : QImage();
    }
    static QString id(const Symbol &symbol, const QString &colour)
    {
        return symbol.name + u'/' + colour;
    }
    /// How much of an image is covered, from 0 to 1.
    static double coverage(const QImage &image)
    {
        double sum = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                sum += image.pixelColor(x, y).alphaF();
        }
        return sum / (image.width() * image.height());
    }
    /// Of any channel of any pixel.
    static int largestDifference(const QImage &one, const QImage &other)
    {
        int largest = 0;
        for (int y = 0; y < one.height(); ++y) {
            for (int x = 0; x < one.width(); ++x) {
                const QColor a = one.pixelColor(x, y);
                const QColor b = other.pixelColor(x, y);
                largest = std::max({largest,
                                    std::abs(a.red() - b.red()),
                                    std::abs(a.green() - b.green()),
                                    std::abs(a.blue() - b.blue())});
            }
        }
        return largest;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(!SymbolImageProvider::installedFont().isEmpty(), "the icon font is not installed");
        for (std::size_t i = 1; i < kSymbols.size(); ++i)
            QVERIFY2(kSymbols.at(i - 1).name < kSymbols.at(i).name, kSymbols.at(i).name.data());
    }

    void everySymbolIsDrawn_data()
    {
        QTest::addColumn<int>("pixels");
        for (const int pixels : {16, 24, 48})
            QTest::addRow("%d pixels", pixels) << pixels;
    }
    void everySymbolIsDrawn()
    {
        QFETCH(int, pixels);
        const QImage unknown = draw(m_provider, u"no.such.symbol/ff0000"_s, pixels);
        QList<QImage> seen{unknown};
        for (const Symbol &symbol : kSymbols) {
            const QImage image = draw(m_provider, id(symbol, u"ff0000"_s), pixels);
            const QByteArray name(symbol.name.data(), symbol.name.size());
            QVERIFY2(!image.isNull(), name);
            QVERIFY2(!seen.contains(image), name + " looks like another");
            seen.append(image);
            const double covered = coverage(image);
            QVERIFY2(covered > 0.05 && covered < 0.75, name + ' ' + QByteArray::number(covered));
            // Within its square, in the middle of it.
            const QColor corner = image.pixelColor(0, 0);
            QVERIFY2(corner.alpha() == 0, name);
            const double left = coverage(image.copy(0, 0, pixels / 2, pixels));
            const double above = coverage(image.copy(0, 0, pixels, pixels / 2));
            QVERIFY2(left / 2 > covered / 4 && left / 2 < covered * 3 / 4, name);
            QVERIFY2(above / 2 > covered / 4 && above / 2 < covered * 3 / 4, name);
        }
    }

    void aSymbolHasTheColourAskedFor_data()
    {
        QTest::addColumn<QString>("hex");
        QTest::addColumn<QColor>("colour");
        QTest::newRow("opaque") << u"0a8ea3"_s << QColor(0x0a, 0x8e, 0xa3);
        QTest::newRow("translucent") << u"800a8ea3"_s << QColor(0x0a, 0x8e, 0xa3, 0x80);
        QTest::newRow("not a colour") << u"teal?"_s << QColor(Qt::gray);
        QTest::newRow("none") << QString() << QColor(Qt::gray);
    }
    void aSymbolHasTheColourAskedFor()
    {
        QFETCH(QString, hex);
        QFETCH(QColor, colour);
        // A glyph, a drawing, and the mark of what is neither; all are covered in the middle.
        for (const QString &name : {u"plus"_s, u"rectangle.on.rectangle.fill"_s, u"unknown"_s}) {
            const QColor middle = draw(m_provider, name + u'/' + hex, 48).pixelColor(24, 24);
            QCOMPARE(middle.alpha(), colour.alpha());
            QVERIFY(std::abs(middle.red() - colour.red()) <= 1);
            QVERIFY(std::abs(middle.green() - colour.green()) <= 1);
            QVERIFY(std::abs(middle.blue() - colour.blue()) <= 1);
        }
    }

    void whatCannotBeDrawnIsADot()
    {
        SymbolImageProvider withoutFont(u"/nonexistent.ttf"_s);
        const QImage dot = draw(withoutFont, u"no.such.symbol/000000"_s, 24);
        QCOMPARE(draw(withoutFont, u"plus/000000"_s, 24), dot);
        QVERIFY(draw(withoutFont, u"doc/000000"_s, 24) != dot);
        QVERIFY(coverage(dot) > 0.05 && coverage(dot) < 0.2);
    }

    void onlyAnUnknownNameIsWarnedOf()
    {
        QLoggingCategory::setFilterRules(u"dugwise.views.symbols=true"_s);
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        draw(m_provider, u"plus/000000"_s, 24);
        QTest::ignoreMessage(QtWarningMsg, "no such symbol: \"plus.fill\"");
        draw(m_provider, u"plus.fill/000000"_s, 24);
        QLoggingCategory::setFilterRules(QString());
    }

    void sizesAreKeptSane()
    {
        QCOMPARE(m_provider.requestImage(u"plus/0"_s, nullptr, QSize()).size(), QSize(24, 24));
        QCOMPARE(m_provider.requestImage(u"plus/0"_s, nullptr, QSize(20, 0)).size(), QSize(20, 20));
        QCOMPARE(m_provider.requestImage(u"plus/0"_s, nullptr, QSize(1 << 20, 1)).width(), 1024);
    }

    /// In a view, the image has as many pixels as the screen gives it.
    void aSymbolInAViewIsCrisp_data()
    {
        QTest::addColumn<int>("size");
        QTest::newRow("even") << 48;
        QTest::newRow("odd") << 17;
    }
    void aSymbolInAViewIsCrisp()
    {
        QFETCH(int, size);
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        QQuickView view;
        addImageProviders(*view.engine());
        QQmlComponent component(view.engine());
        const QString text = u"import QtQuick; import Dugwise\n"
                             "Rectangle { width: 60; height: 60\n"
                             "  Symbol { name: 'trash'; size: %1; color: '#ff0000' } }"_s;
        component.setData(text.arg(size).toUtf8(), QUrl());
        QObject *const item = component.create();
        QVERIFY2(item, qPrintable(component.errorString()));
        view.setContent(QUrl(), &component, item);
        view.show();
        const QImage shown = view.grabWindow();
        const double scale = qEnvironmentVariable("QT_SCALE_FACTOR", u"1"_s).toDouble();
        QCOMPARE(shown.width(), qRound(60 * scale));
        const int pixels = qRound(size * scale);
        const auto *const image = item->findChild<QQuickItem *>()->childItems().constFirst();
        QCOMPARE(image->property("sourceSize").toSize(), QSize(pixels, pixels));
        QCOMPARE(image->width() * scale, double(pixels));
        QCOMPARE(image->position(), QPointF());
        QImage expected(shown.size(), QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::white);
        QPainter(&expected).drawImage(0, 0, draw(m_provider, u"trash/ff0000"_s, pixels));
        // The software renderer filters even where it has nothing to scale.
        QVERIFY(largestDifference(shown, expected) <= (scale == 1 ? 0 : 96));
    }

    void soItIsOnOtherScreens_data()
    {
        QTest::addColumn<QString>("scale");
        QTest::newRow("1.5") << u"1.5"_s;
        QTest::newRow("2") << u"2"_s;
    }
    void soItIsOnOtherScreens()
    {
        QFETCH(QString, scale);
        QProcess another;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_SCALE_FACTOR"_s, scale);
        another.setProcessEnvironment(environment);
        another.start(QCoreApplication::applicationFilePath(), {u"aSymbolInAViewIsCrisp"_s});
        QVERIFY(another.waitForFinished());
        QVERIFY2(another.exitCode() == 0, another.readAllStandardOutput());
    }

    /// Leaves a sheet of all of them for people to look at.
    void contactSheet()
    {
        const QString path = qEnvironmentVariable("DUGWISE_CONTACT_SHEET");
        if (path.isEmpty())
            QSKIP("DUGWISE_CONTACT_SHEET names no file to make");
        constexpr int columns = 6;
        QImage sheet(columns * 220, 9 * 110, QImage::Format_ARGB32_Premultiplied);
        sheet.fill(Qt::white);
        QPainter painter(&sheet);
        for (std::size_t i = 0; i < kSymbols.size(); ++i) {
            int x = static_cast<int>(i % columns) * 220 + 10;
            const int y = static_cast<int>(i / columns) * 110 + 10;
            painter.drawText(x, y + 90, QString(kSymbols.at(i).name).left(30));
            for (const int pixels : {72, 48, 24, 16}) {
                painter.drawImage(x, y, draw(m_provider, id(kSymbols.at(i), u"1d1d1f"_s), pixels));
                x += pixels + 8;
            }
        }
        painter.end();
        QVERIFY(sheet.save(path));
    }
};

} // namespace dugwise::test

QTEST_MAIN(dugwise::test::TstSymbols)
#include "tst_Symbols.moc"
