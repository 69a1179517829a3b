// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/DesktopMetadata.h"

#include "Platform/FileAttributes.h"
#include "Platform/Linux/BrowserProfiles.h"
#include "Platform/Linux/ChromiumDownloads.h"
#include "Platform/Linux/DownloadAttributes.h"
#include "Platform/Linux/FirefoxDownloads.h"
#include "Platform/Linux/GvfsMetadata.h"
#include "Platform/Linux/RecentlyUsed.h"
#include "Platform/Linux/ResourceScores.h"
#include "Utilities/FilePath.h"

#include <QMimeDatabase>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr qint64 kLargestXbel = qint64{64} * 1024 * 1024;

struct MetadataStore
{
    enum class Kind { firefox, chromium, gvfs, recentlyUsed, activities };
    using enum Kind;

    Kind kind = Kind::firefox;
    QString path;
    /// Of all of its files, by which a change is seen.
    QList<StoreFileState> state;

    bool operator==(const MetadataStore &) const = default;
};

/// The stores that are there; those whose records go first stand first.
QList<MetadataStore> findStores(const StandardFolders &folders)
{
    QList<MetadataStore> stores;
    const auto add = [&](MetadataStore::Kind kind, const QString &path, const auto &stateOf) {
        const QList<StoreFileState> state = stateOf(path);
        if (state.first().exists)
            stores.append({kind, path, state});
    };
    const auto fileState = [](const QString &path) { return QList{storeFileState(path)}; };
    const QString data = folders.dataHome();
    for (const QString &path : firefoxDatabases(folders))
        add(MetadataStore::firefox, path, databaseState);
    for (const QString &path : chromiumDatabases(folders))
        add(MetadataStore::chromium, path, databaseState);
    // Those of other disks hold paths from wherever that disk is mounted.
    for (const auto tree : {"home"_L1, "root"_L1})
        add(MetadataStore::gvfs, data + "/gvfs-metadata/"_L1 + tree, gvfsTreeState);
    add(MetadataStore::recentlyUsed, data + "/recently-used.xbel"_L1, fileState);
    add(MetadataStore::activities,
        data + "/kactivitymanagerd/resources/database"_L1,
        databaseState);
    return stores;
}

QString programOf(MetadataStore::Kind kind)
{
    switch (kind) {
    case MetadataStore::firefox:
        return u"Firefox"_s;
    case MetadataStore::chromium:
        return u"Chromium"_s;
    case MetadataStore::gvfs:
        return u"GVFS"_s;
    case MetadataStore::recentlyUsed:
        return u"recently used files"_s;
    case MetadataStore::activities:
        return u"KDE activities"_s;
    }
    return {};
}

StoreFacts readStore(const MetadataStore &store,
                     const StandardFolders &folders,
                     Instant now,
                     const std::stop_token &stop)
{
    const auto copy = [&] { return openDatabaseCopy(store.path, folders.cache, stop); };
    switch (store.kind) {
    case MetadataStore::firefox:
        return readFirefoxDownloads(copy(), now);
    case MetadataStore::chromium:
        return readChromiumDownloads(copy(), now);
    case MetadataStore::gvfs:
        return readGvfsMetadata(
            store.path, FilePath::name(store.path) == "home"_L1 ? folders.home : QString(), stop);
    case MetadataStore::recentlyUsed:
        return readRecentlyUsed(readStoreFile(store.path, kLargestXbel).value_or(QByteArray()),
                                now);
    case MetadataStore::activities:
        return readResourceScores(copy(), now);
    }
    return {};
}

std::optional<QString> contentTypeOf(const QString &path)
{
    const QMimeType type = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension);
    return type.isDefault() ? std::nullopt : std::optional(type.name());
}

/// A store, and what it held in that state. An index takes over those of the one before it whose
/// stores have not changed, hence shared.
struct ReadStore
{
    MetadataStore store;
    std::shared_ptr<const StoreFacts> facts;
};

class DesktopMetadataIndex final : public MetadataIndex
{
public:
    explicit DesktopMetadataIndex(QList<ReadStore> stores)
        : m_stores(std::move(stores))
    {}
    [[nodiscard]] const QList<ReadStore> &stores() const { return m_stores; }

    [[nodiscard]] std::optional<MetadataItem> item(const QString &path) const override
    {
        MetadataItem item;
        item.lastUsedDate = lastUse(path);
        item.contentType = contentTypeOf(path);
        const std::optional<Download> attributes = downloadAttributes(path);
        const std::optional<Download> recorded = recordedDownload(path);
        const std::optional<Download> &download = attributes ? attributes : recorded;
        if (!download)
            return item;
        if (!download->source.isEmpty()) // else the page that led to it would pass for it
            item.whereFroms = QStringList{download->source, download->referrer};
        item.whereFroms.removeAll(QString());
        // Attributes have no date of their own.
        const auto date = recorded && recorded->date ? recorded->date : bornDate(path);
        if (date)
            item.downloadedDate.append(*date);
        return item;
    }

private:
    [[nodiscard]] static std::optional<Instant> bornDate(const QString &path)
    {
        const auto attributes = fileAttributes(path);
        if (!attributes)
            return std::nullopt;
        return attributes->createdDate.value_or(attributes->modifiedDate);
    }

    [[nodiscard]] std::optional<Instant> lastUse(const QString &path) const
    {
        std::optional<Instant> newest;
        for (const ReadStore &read : m_stores) {
            const auto at = read.facts->lastUses.constFind(path);
            if (at != read.facts->lastUses.cend())
                newest = std::max(newest, std::optional(*at));
        }
        return newest;
    }

    /// The newest record that can be of the file as it is now, of the first kind of store that has
    /// one.
    [[nodiscard]] std::optional<Download> recordedDownload(const QString &path) const
    {
        const Download *newest = nullptr;
        MetadataStore::Kind kind = MetadataStore::firefox;
        std::optional<FileAttributes> attributes;
        for (const ReadStore &read : m_stores) {
            if (newest && read.store.kind != kind)
                break;
            const auto at = read.facts->downloads.constFind(path);
            if (at == read.facts->downloads.cend())
                continue;
            if (!attributes)
                attributes = fileAttributes(path);
            for (const Download &download : *at) {
                const bool canBe =
                    download.size <= 0 || (attributes && attributes->size == download.size);
                if (canBe && (!newest || newest->date < download.date))
                    newest = &download;
            }
            kind = read.store.kind;
        }
        return newest ? std::optional(*newest) : std::nullopt;
    }

    QList<ReadStore> m_stores;
};

class DesktopMetadataReader final : public MetadataReader
{
public:
    DesktopMetadataReader(StandardFolders folders, const Clock &clock)
        : m_folders(std::move(folders))
        , m_clock(clock)
    {}

    [[nodiscard]] std::shared_ptr<const MetadataIndex>
    read(std::shared_ptr<const MetadataIndex> previous, const std::stop_token &stop) const override
    {
        const auto *const before = dynamic_cast<const DesktopMetadataIndex *>(previous.get());
        const QList<MetadataStore> stores = findStores(m_folders);
        const QList<ReadStore> known = before ? before->stores() : QList<ReadStore>();
        if (before && std::ranges::equal(known, stores, {}, &ReadStore::store))
            return previous;
        QList<ReadStore> read;
        for (const MetadataStore &store : stores) {
            const auto at = std::ranges::find(known, store, &ReadStore::store);
            if (at != known.cend())
                read.append(*at);
            else
                read.append({store,
                             std::make_shared<const StoreFacts>(
                                 readStore(store, m_folders, m_clock.now(), stop))});
        }
        if (stop.stop_requested())
            return previous; // what was read last may not be whole
        return std::make_shared<DesktopMetadataIndex>(std::move(read));
    }

private:
    StandardFolders m_folders;
    Clock m_clock;
};

} // namespace

std::unique_ptr<MetadataReader> desktopMetadataReader(const StandardFolders &folders,
                                                      const Clock &clock)
{
    return std::make_unique<DesktopMetadataReader>(folders, clock);
}

QStringList describeMetadataStores(const StandardFolders &folders)
{
    QStringList lines;
    for (const MetadataStore &store : findStores(folders))
        lines.append(programOf(store.kind) + u": "_s + store.path);
    return lines;
}

} // namespace dugwise
