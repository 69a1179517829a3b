// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>

#include <optional>
#include <stop_token>

namespace dugwise {

/// A small form of a picture.
struct Thumbnail
{
    QSize size;        ///< pixels
    QByteArray pixels; ///< row by row, red, green, blue and alpha, a byte each; not premultiplied

    bool operator==(const Thumbnail &) const = default;
};

/// Makes thumbnails of image files; callable from any thread, which waits.
class ThumbnailReader
{
public:
    ThumbnailReader() = default;
    Q_DISABLE_COPY_MOVE(ThumbnailReader)
    virtual ~ThumbnailReader() = default;

    /// Absent when the file is no image that can be read here, or takes too much to read.
    [[nodiscard]] virtual std::optional<Thumbnail> thumbnail(const QString &path,
                                                             const std::stop_token &stop) const = 0;
};

} // namespace dugwise
