// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <stop_token>

namespace dugwise {

/// The beginning of a text file.
struct TextHead
{
    QByteArray text; ///< UTF-8
    bool isWhole = true;
};

/// The first `characters` characters of a file that is UTF-8 from its first byte to its last;
/// absent when it is not, or is no regular file, or cannot be read. The whole file is looked at,
/// in pieces: memory stays below some 2 MiB whatever its size, and no more than 1 MiB of text is
/// kept, which cuts only texts whose characters take hundreds of bytes each.
[[nodiscard]] std::optional<TextHead>
readTextHead(const QString &path, std::size_t characters, const std::stop_token &stop = {});

} // namespace dugwise
