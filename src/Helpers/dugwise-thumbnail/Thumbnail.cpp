// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Helpers/dugwise-thumbnail/Thumbnail.h"

#include "Platform/ThumbnailProtocol.h"

#include <QBuffer>
#include <QByteArrayList>
#include <QImageReader>

namespace dugwise::Thumbnails {

namespace {

/// The code of more formats may be installed; these are what files that count as images hold.
QByteArrayList formats()
{
    return {"png", "jpeg", "gif", "webp", "tiff", "bmp", "svg"};
}

constexpr int kMostMegabytes = 256; ///< of an image as it is decoded
constexpr qint64 kMostPixels = 250'000'000;
constexpr QSize kSquare(ThumbnailProtocol::kMostSide, ThumbnailProtocol::kMostSide);

QSize fitting(const QSize &size)
{
    const bool isSmall = size.width() <= kSquare.width() && size.height() <= kSquare.height();
    return isSmall ? size : size.scaled(kSquare, Qt::KeepAspectRatio).expandedTo({1, 1});
}

QImage read(QImageReader &reader)
{
    const QSize size = reader.size();
    if (qint64{size.width()} * size.height() > kMostPixels)
        return {};
    if (size.isValid())
        reader.setScaledSize(fitting(size));
    reader.setAutoTransform(true);
    const QImage image = reader.read();
    if (image.isNull())
        return {};
    const QSize small = fitting(image.size());
    if (small == image.size())
        return image.convertToFormat(QImage::Format_RGBA8888);
    return image.scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_RGBA8888);
}

} // namespace

void loadFormats()
{
    QImageReader::setAllocationLimit(kMostMegabytes);
    QBuffer nothing;
    for (const QByteArray &format : formats()) {
        QImageReader reader(&nothing, format);
        [[maybe_unused]] const bool isReadable = reader.canRead();
    }
}

QImage read(QIODevice &file)
{
    const QByteArray format = QImageReader::imageFormat(&file);
    if (!formats().contains(format))
        return {};
    QImageReader reader(&file, format);
    return read(reader);
}

} // namespace dugwise::Thumbnails
