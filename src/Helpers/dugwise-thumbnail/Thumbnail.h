// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

class QIODevice;

namespace dugwise::Thumbnails {

/// Loads the code of all formats, which can be found only as long as files can be opened.
void loadFormats();

/// The image in a small form that fits a square of ThumbnailProtocol::kMostSide, upright, as
/// Format_RGBA8888; null when it is of no format known here, or takes too much memory.
[[nodiscard]] QImage read(QIODevice &file);

} // namespace dugwise::Thumbnails
