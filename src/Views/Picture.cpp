// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Picture.h"

#include <QPainter>

namespace dugwise {

void Picture::setImage(const QVariant &value)
{
    const auto image = value.value<QImage>();
    if (image.isNull() && m_image.isNull())
        return;
    m_image = image;
    setImplicitSize(image.width(), image.height());
    update();
    Q_EMIT imageChanged();
}

void Picture::paint(QPainter *painter)
{
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(boundingRect(), m_image);
}

} // namespace dugwise
