// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/SpotlightMetadataService.h"

#include "Platform/FileAttributes.h"
#include "Platform/MetadataItem.h"
#include "Platform/MetadataQueryCommand.h"
#include "Utilities/FilePath.h"
#include "Utilities/Text.h"

#include <QCoroFuture>
#include <QSet>
#include <QtConcurrentRun>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr qsizetype kMostHitsOfOneRun = 80;
constexpr qsizetype kMostHits = 100;

SpotlightSearchHit describe(const QString &path)
{
    const auto attributes = fileAttributes(path);
    SpotlightSearchHit hit{
        .name = FilePath::name(path),
        .path = path,
        .modifiedDate = std::nullopt,
        .size = attributes ? attributes->size : 0,
        .fileExtension = FilePath::fileExtension(path),
        .folderPath = FilePath::folder(path),
    };
    if (attributes)
        hit.modifiedDate = attributes->modifiedDate;
    return hit;
}

/// The hits of a run's output, a path a line.
QList<SpotlightSearchHit> describeLines(const QByteArray &output)
{
    QList<SpotlightSearchHit> hits;
    if (!output.isValidUtf8())
        return hits;
    for (const QByteArray &line : output.split('\n')) {
        if (!line.isEmpty() && hits.size() < kMostHitsOfOneRun)
            hits.append(describe(toQString(view(line))));
    }
    return hits;
}

} // namespace

SpotlightMetadataService::SpotlightMetadataService(std::shared_ptr<const MetadataIndex> index,
                                                   MetadataQueryCommand *command)
    : m_index(std::move(index))
    , m_command(command)
{}

SpotlightFileMetadata SpotlightMetadataService::getMetadata(const QString &path) const
{
    const std::optional<MetadataItem> item = m_index ? m_index->item(path) : std::nullopt;
    if (!item)
        return {};
    SpotlightFileMetadata metadata{
        .lastUsedDate = item->lastUsedDate,
        .downloadDate = std::nullopt,
        .downloadSource = std::nullopt,
        .contentTypeUTI = item->contentType,
    };
    if (!item->downloadedDate.isEmpty())
        metadata.downloadDate = item->downloadedDate.first();
    if (!item->whereFroms.isEmpty())
        metadata.downloadSource = item->whereFroms.first();
    return metadata;
}

QCoro::Task<QList<SpotlightSearchHit>> SpotlightMetadataService::searchSpotlight(QString query,
                                                                                 QStringList)
{
    MetadataQueryCommand *const command = m_command;
    if (!command)
        co_return {};
    const QStringList byName{u"-name"_s, query};
    const QStringList byContent{query};
    QList<SpotlightSearchHit> found = co_await runMDFind(command, byName);
    const QList<SpotlightSearchHit> more = co_await runMDFind(command, byContent);
    found.append(more);

    QList<SpotlightSearchHit> hits;
    QSet<QString> paths;
    for (const SpotlightSearchHit &hit : std::as_const(found)) {
        if (paths.contains(hit.path))
            continue;
        paths.insert(hit.path);
        hits.append(hit);
    }
    hits.resize(std::min(hits.size(), kMostHits));
    co_return hits;
}

QCoro::Task<QList<SpotlightSearchHit>>
SpotlightMetadataService::runMDFind(MetadataQueryCommand *command, QStringList arguments)
{
    const std::optional<QByteArray> output = co_await command->run(arguments);
    // In a worker: a path may lie on a disk that does not answer.
    const QFuture<QList<SpotlightSearchHit>> describing =
        QtConcurrent::run(describeLines, output.value_or(QByteArray()));
    const QList<SpotlightSearchHit> hits = co_await describing;
    co_return hits;
}

} // namespace dugwise
