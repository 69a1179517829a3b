// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QQuickImageProvider>

namespace dugwise {

/// Draws shadows of rounded rectangles, as image://shadow/RADIUS/BLUR, in whole
/// device-independent pixels: an opaque black nine-patch whose shadow fades out over BLUR pixels
/// on both sides of the rectangle's edge. Its middle is one pixel; its borders are
/// RADIUS + 2 * BLUR wide. Both are 64 at most.
class ShadowImageProvider final : public QQuickImageProvider
{
public:
    ShadowImageProvider();

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

} // namespace dugwise
