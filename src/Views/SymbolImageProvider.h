// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QQuickImageProvider>
#include <QRawFont>

namespace dugwise {

/// Draws the symbols of SymbolTable, as image://symbol/NAME/COLOUR: the colour is RRGGBB or
/// AARRGGBB in hexadecimal digits. The image is a square of the asked size in pixels, 24 when none
/// is asked for. What cannot be drawn (a name not in the table, a glyph without the font) gives a
/// dot in that colour.
class SymbolImageProvider final : public QQuickImageProvider
{
public:
    /// `font` is the file of the Material icon font; it may be missing.
    explicit SymbolImageProvider(const QString &font);

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

    /// Where Debian's fonts-material-design-icons-iconfont has the font; empty where it is not
    /// installed.
    [[nodiscard]] static QString installedFont();

private:
    QRawFont m_font;
};

} // namespace dugwise
