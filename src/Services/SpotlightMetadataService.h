// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Records/Instant.h"

#include <QCoroTask>
#include <QList>
#include <QStringList>

#include <memory>
#include <optional>

namespace dugwise {

class MetadataIndex;
class MetadataQueryCommand;

/// What the desktop's metadata tells about one file.
struct SpotlightFileMetadata
{
    std::optional<Instant> lastUsedDate;
    std::optional<Instant> downloadDate;
    std::optional<QString> downloadSource;
    std::optional<QString> contentTypeUTI;

    bool operator==(const SpotlightFileMetadata &) const = default;
};

/// One file found by the machine-wide search.
struct SpotlightSearchHit
{
    QString name;
    QString path;
    std::optional<Instant> modifiedDate;
    qint64 size = 0; ///< bytes; 0 when unknown
    QString fileExtension;
    QString folderPath;

    bool operator==(const SpotlightSearchHit &) const = default;
};

/// The one access point to the desktop's metadata and its machine-wide search. Holds no state.
class SpotlightMetadataService
{
public:
    /// Both facilities may be null; the command outlives the service. The index is a snapshot that
    /// all who look into it share.
    SpotlightMetadataService(std::shared_ptr<const MetadataIndex> index,
                             MetadataQueryCommand *command);

    /// Unknown values are absent; callable from any thread.
    [[nodiscard]] SpotlightFileMetadata getMetadata(const QString &path) const;

    /// At most 100 hits, those by name before those by content, each path once. The search is
    /// always machine-wide: `scopes` has no effect.
    [[nodiscard]] QCoro::Task<QList<SpotlightSearchHit>> searchSpotlight(QString query,
                                                                         QStringList scopes = {});

private:
    static QCoro::Task<QList<SpotlightSearchHit>> runMDFind(MetadataQueryCommand *command,
                                                            QStringList arguments);

    std::shared_ptr<const MetadataIndex> m_index;
    MetadataQueryCommand *m_command;
};

} // namespace dugwise
