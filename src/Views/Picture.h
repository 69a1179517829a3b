// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QQuickPaintedItem>
#include <QVariant>
#include <QtQmlIntegration>

namespace dugwise {

/// Shows an image, scaled to the item.
class Picture : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    /// A QImage.
    Q_PROPERTY(QVariant image READ image WRITE setImage NOTIFY imageChanged)

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    [[nodiscard]] QVariant image() const { return m_image; }
    /// The implicit size becomes the image's.
    void setImage(const QVariant &value);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void imageChanged();

private:
    QImage m_image;
};

} // namespace dugwise
