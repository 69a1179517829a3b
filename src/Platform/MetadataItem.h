// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

#include <QList>
#include <QStringList>

#include <optional>

namespace dugwise {

/// What the desktop knows about one file beyond its file system.
struct MetadataItem
{
    std::optional<Instant> lastUsedDate;
    QList<Instant> downloadedDate;
    QStringList whereFroms; ///< addresses it came from, the nearest first
    std::optional<QString> contentType;
};

/// Looks items up by path; callable from any thread.
class MetadataIndex
{
public:
    MetadataIndex() = default;
    Q_DISABLE_COPY_MOVE(MetadataIndex)
    virtual ~MetadataIndex() = default;

    [[nodiscard]] virtual std::optional<MetadataItem> item(const QString &path) const = 0;
};

} // namespace dugwise
