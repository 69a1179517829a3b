// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

#include <QList>
#include <QStringList>

#include <memory>
#include <optional>
#include <stop_token>

namespace dugwise {

/// What the desktop knows about one file beyond its file system.
struct MetadataItem
{
    std::optional<Instant> lastUsedDate;
    QList<Instant> downloadedDate;
    QStringList whereFroms; ///< addresses it came from, the nearest first
    std::optional<QString> contentType;
};

/// Looks items up by path. What it has read does not change; callable from any thread.
class MetadataIndex
{
public:
    MetadataIndex() = default;
    Q_DISABLE_COPY_MOVE(MetadataIndex)
    virtual ~MetadataIndex() = default;

    [[nodiscard]] virtual std::optional<MetadataItem> item(const QString &path) const = 0;
};

/// Makes indexes of what the desktop knows at a time.
class MetadataReader
{
public:
    MetadataReader() = default;
    Q_DISABLE_COPY_MOVE(MetadataReader)
    virtual ~MetadataReader() = default;

    /// `previous`, which may be null, where nothing has changed since or `stop` is requested, else
    /// a new one. Never null without a stop. Reads files: for workers; callable from any thread.
    [[nodiscard]] virtual std::shared_ptr<const MetadataIndex>
    read(std::shared_ptr<const MetadataIndex> previous, const std::stop_token &stop) const = 0;
};

} // namespace dugwise
