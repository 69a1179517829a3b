// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SymbolImageProvider.h"

#include "Views/SymbolTable.h"

#include <QLoggingCategory>
#include <QPainter>
#include <QPainterPath>
#include <QStandardPaths>
#include <QSvgRenderer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

/// Silent unless asked for: a name that is not in the table is a mistake of a view, not of the day.
Q_LOGGING_CATEGORY(logging, "dugwise.views.symbols", QtCriticalMsg)

/// The side of the squares that all symbols are drawn in.
constexpr int kGrid = 24;
constexpr int kMaximumPixels = 1024;
/// The font gives outlines in 64ths of a pixel: this size makes them finer than any screen.
constexpr int kOutlinePixels = 240;

QPainterPath dot()
{
    QPainterPath path;
    path.addEllipse(QPointF(kGrid / 2.0, kGrid / 2.0), kGrid / 6.0, kGrid / 6.0);
    return path;
}

/// A glyph's outline in the grid; empty when the font has none.
QPainterPath outline(const QRawFont &font, char16_t character)
{
    const QChar text(character);
    quint32 glyph = 0;
    int count = 1;
    if (!font.isValid() || !font.glyphIndexesForChars(&text, 1, &glyph, &count) || glyph == 0)
        return {};
    constexpr qreal scale = qreal(kGrid) / kOutlinePixels;
    const QTransform intoGrid = QTransform::fromScale(scale, scale).translate(0, font.ascent());
    return intoGrid.map(font.pathForGlyph(glyph));
}

} // namespace

SymbolImageProvider::SymbolImageProvider(const QString &font)
    : QQuickImageProvider(QQuickImageProvider::Image)
    , m_font(font, kOutlinePixels, QFont::PreferNoHinting)
{}

QString SymbolImageProvider::installedFont()
{
    return QStandardPaths::locate(
        QStandardPaths::GenericDataLocation,
        u"fonts/truetype/material-design-icons-iconfont/MaterialIcons-Regular.ttf"_s);
}

QImage SymbolImageProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const int asked = std::max(requestedSize.width(), requestedSize.height());
    const int side = asked > 0 ? std::min(asked, kMaximumPixels) : kGrid;
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QString name = id.section(u'/', 0, 0);
    const QColor colour(u'#' + id.section(u'/', 1));
    const std::optional<Symbol> symbol = findSymbol(name);
    if (!symbol)
        qCWarning(logging) << "no such symbol:" << name;

    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    if (symbol && symbol->glyph == 0) {
        QSvgRenderer drawing(u":/qt-project.org/imports/Dugwise/symbols/%1.svg"_s.arg(name));
        drawing.render(&painter);
    } else {
        const QPainterPath glyph = symbol ? outline(m_font, symbol->glyph) : QPainterPath();
        painter.scale(qreal(side) / kGrid, qreal(side) / kGrid);
        painter.fillPath(glyph.isEmpty() ? dot() : glyph, Qt::black);
        painter.resetTransform();
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), colour.isValid() ? colour : QColor(Qt::gray));
    painter.end();
    if (size)
        *size = image.size();
    return image;
}

} // namespace dugwise
